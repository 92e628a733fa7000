import { short, whole } from "../base/format";
import type { Flow } from "./flow";
import { type Entry, lossesOf } from "./ledger";

/** What is said of a block's losses: in red what is lost now, quietly what was lost before. */
export interface Loss {
  isNow: boolean;
  count: number;
  /** Such as "12 full queue, 3 refused since the server's start, last at 12:03:05". */
  text: string;
}

const nowMs = 10_000;

/**
 * Null when nothing was lost. `at` is the account's time as performance.now() tells, `timeOf` has such a time as a
 * time of day.
 */
export function lossOf(
  entry: Entry,
  flow: Flow | undefined,
  at: number,
  timeOf: (time: number) => string,
): Loss | null {
  const lost = [...lossesOf(entry)];
  if (lost.length === 0) {
    return null;
  }
  const last = flow?.lastLoss ?? null;
  const what = lost.map(([fate, count]) => `${whole(count)} ${fate.replace(/_/g, " ")}`).join(", ");
  return {
    isNow: last !== null && at - last < nowMs,
    count: lost.reduce((sum, [, count]) => sum + count, 0),
    text: `${what} since the server's start, ${whenOf(last, flow?.lossRate ?? 0, timeOf)}`,
  };
}

function whenOf(last: number | null, rate: number, timeOf: (time: number) => string): string {
  if (rate > 0) {
    return `${short(rate)} /s now`;
  }
  return last === null ? "none while this page looked on" : `last at ${timeOf(last)}`;
}
