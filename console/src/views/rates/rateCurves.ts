import type { CurveSet } from "../../charts/curves";
import type { Rates } from "../../server/queries";
import { medianOf } from "./judgement";
import { beginOf } from "./rateTimes";

/**
 * The rates of channels over time: x is in seconds before the newest record, each rate of the span before it.
 * There is none where records are missing.
 */
export function curvesOf(
  records: readonly Rates[],
  channels: readonly number[],
  names: (channel: number) => string,
  tick: number,
  seconds: number,
): CurveSet {
  const newest = records[records.length - 1];
  const known = channels.filter((channel) => newest !== undefined && channel < newest.countsIn.length);
  const longest = Math.max(seconds, 4 * usualStep(records) * tick);
  const begins = records.map((_, i) => beginOf(records, i, seconds / tick));
  const at = records.slice(1).map((record) => (record.timestamp - newest!.timestamp) * tick);
  const rate = (counts: (record: Rates) => Float64Array, channel: number): Float64Array =>
    Float64Array.from(at, (_, i) => {
      const [from, to] = [records[begins[i + 1]!]!, records[i + 1]!];
      const span = (to.timestamp - from.timestamp) * tick;
      return span > longest * (1 + 1e-9) ? NaN : (counts(to)[channel]! - counts(from)[channel]!) / span;
    });
  return {
    x: Float64Array.from(at),
    steps: false,
    curves: known.flatMap((channel, colour) => {
      const [name, look] = [names(channel), { colour, gaps: true }];
      return [
        { ...look, label: `${name} in`, values: rate(({ countsIn }) => countsIn, channel) },
        { ...look, label: `${name} out`, dashed: true, values: rate(({ countsOut }) => countsOut, channel) },
      ];
    }),
  };
}

const stepsLooked = 100;

/** From record to record, as it mostly is of late. */
function usualStep(records: readonly Rates[]): number {
  const late = records.slice(-stepsLooked);
  return medianOf(late.slice(1).map(({ timestamp }, i) => timestamp - late[i]!.timestamp)) || 0;
}
