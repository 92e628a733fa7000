import { useEffect, useState } from "preact/hooks";
import { server } from "../../app/state";
import { noReading, poll, type Reading } from "../../server/poll";
import { askFor, type LiveCurves } from "./liveCurves";
import type { Selection } from "./selection";

export const pollIntervalMs = 200;

/** Asks for the chosen channels again and again; while frozen what was read stays, though its block may go. */
export function useHistograms(selections: readonly Selection[], isFrozen: boolean): Reading<LiveCurves> {
  const [reading, setReading] = useState<Reading<LiveCurves>>(noReading);
  const key = JSON.stringify(selections.map(({ block, channels }) => [block.path, channels]));
  useEffect(() => {
    const asked = selections.filter(({ channels }) => channels.length > 0);
    if (asked.length === 0 && !isFrozen) {
      setReading(noReading);
    }
    return isFrozen || asked.length === 0
      ? undefined
      : poll(() => askFor(server, asked), { intervalMs: pollIntervalMs }, setReading);
  }, [key, isFrozen]);
  return reading;
}
