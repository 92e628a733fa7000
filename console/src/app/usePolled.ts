import { useEffect, useState } from "preact/hooks";
import { noReading, poll, type Reading } from "../server/poll";

/**
 * Asks while the component is shown, anew whenever one of `keys` changes; a reading of before then is forgotten.
 * `ask` null asks nothing.
 */
export function usePolled<T>(
  ask: (() => Promise<T>) | null,
  intervalMs: number,
  keys: readonly (string | number | boolean)[],
): Reading<T> {
  const [reading, setReading] = useState<Reading<T>>(noReading);
  useEffect(() => {
    setReading(noReading);
    return ask === null ? undefined : poll(ask, { intervalMs }, setReading);
  }, [intervalMs, ...keys]);
  return reading;
}
