import { useRef, useState } from "preact/hooks";
import { usePolled } from "../../app/usePolled";
import { noReading, type Reading } from "../../server/poll";

export interface Freezable<T> {
  reading: Reading<T>;
  isFrozen: boolean;
  toggle: () => void;
}

/**
 * Asks until it is frozen, and then no more: some answers are given only once. A reading stays until the next one,
 * so this must not outlive what it asks.
 */
export function useFreeze<T>(ask: (() => Promise<T>) | null, intervalMs: number): Freezable<T> {
  const [isFrozen, setFrozen] = useState(false);
  const kept = useRef<Reading<T>>(noReading);
  const latest = usePolled(isFrozen ? null : ask, intervalMs, [isFrozen, ask !== null]);
  if (!isFrozen && (latest.value !== null || latest.fault !== null)) {
    kept.current = latest.value === null ? { ...kept.current, fault: latest.fault } : latest;
  }
  return { reading: kept.current, isFrozen, toggle: () => setFrozen(!isFrozen) };
}
