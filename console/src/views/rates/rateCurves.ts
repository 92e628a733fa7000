import type { CurveSet } from "../../charts/curves";
import type { Rates } from "../../server/queries";
import { beginOf } from "./rateTimes";

/** The rates of channels over time: x is in seconds before the newest record, each rate of the span before it. */
export function curvesOf(
  records: readonly Rates[],
  channels: readonly number[],
  names: (channel: number) => string,
  tick: number,
  seconds: number,
): CurveSet {
  const newest = records[records.length - 1];
  const known = channels.filter((channel) => newest !== undefined && channel < newest.countsIn.length);
  const begins = records.map((_, i) => beginOf(records, i, seconds / tick));
  const at = records.slice(1).map((record) => (record.timestamp - newest!.timestamp) * tick);
  const rate = (counts: (record: Rates) => Float64Array, channel: number): Float64Array =>
    Float64Array.from(at, (_, i) => {
      const [from, to] = [records[begins[i + 1]!]!, records[i + 1]!];
      return (counts(to)[channel]! - counts(from)[channel]!) / ((to.timestamp - from.timestamp) * tick);
    });
  return {
    x: Float64Array.from(at),
    steps: false,
    curves: known.flatMap((channel, colour) => {
      const name = names(channel);
      return [
        { label: `${name} in`, colour, values: rate(({ countsIn }) => countsIn, channel) },
        { label: `${name} out`, colour, dashed: true, values: rate(({ countsOut }) => countsOut, channel) },
      ];
    }),
  };
}
