import type { Rates } from "../../server/queries";

// Records have the board's timestamps, whose unit only the board knows. The server divides counts by the seconds
// since its start, so both together tell how long a tick is.

/** Shorter spans tell nothing: timestamps and the server's seconds are taken milliseconds apart. */
const leastSeconds = 3;

/** The server's seconds at a record: counts by rate of the channel that counts most; null when none counts. */
export function secondsOf(record: Rates): number | null {
  let best = -1;
  record.ratesIn.forEach((rate, i) => {
    if (rate > 0 && (best < 0 || record.countsIn[i]! > record.countsIn[best]!)) {
      best = i;
    }
  });
  const seconds = best < 0 ? NaN : record.countsIn[best]! / record.ratesIn[best]!;
  return seconds > 0 && Number.isFinite(seconds) ? seconds : null;
}

/** Seconds of one unit of the timestamps, by the first and the last record; null when that can't be told. */
export function tickOf(records: readonly Rates[]): number | null {
  const first = records.find((record) => secondsOf(record) !== null);
  const last = records[records.length - 1];
  if (first === undefined || last === undefined) {
    return null;
  }
  const seconds = (secondsOf(last) ?? 0) - secondsOf(first)!;
  const ticks = last.timestamp - first.timestamp;
  return seconds >= leastSeconds && ticks > 0 ? seconds / ticks : null;
}

/** The index of the record that a rate over so many ticks up to record `to` begins at; -1 when none is before. */
export function beginOf(records: readonly Rates[], to: number, ticks: number): number {
  const most = Math.round(ticks); // as timestamps are whole
  let begin = to - 1;
  while (begin > 0 && records[to]!.timestamp - records[begin - 1]!.timestamp <= most) {
    --begin;
  }
  return begin;
}

/** What a channel counted between two records. */
export interface Counted {
  seconds: number;
  in: Float64Array;
  out: Float64Array;
}

export function between(from: Rates, to: Rates, tick: number): Counted {
  return {
    seconds: (to.timestamp - from.timestamp) * tick,
    in: to.countsIn.map((count, i) => count - from.countsIn[i]!),
    out: to.countsOut.map((count, i) => count - (from.countsOut[i] ?? 0)),
  };
}

/** What the newest record says of the time since the start; nothing when nothing counted. */
export function sinceStart(record: Rates): Counted {
  return { seconds: secondsOf(record) ?? NaN, in: record.countsIn, out: record.countsOut };
}

/** What was counted in the last so many seconds; since the start when these are null, or the tick is. */
export function latestCounts(
  records: readonly Rates[],
  tick: number | null,
  seconds: number | null,
): Counted | null {
  const newest = records[records.length - 1];
  if (newest === undefined) {
    return null;
  }
  const begin = tick === null || seconds === null ? -1 : beginOf(records, records.length - 1, seconds / tick);
  return begin < 0 ? sinceStart(newest) : between(records[begin]!, newest, tick!);
}
