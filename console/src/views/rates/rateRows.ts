import { type Judgement, judge } from "./judgement";
import type { Counted } from "./rateTimes";

/** A channel as it stands on the page; rates are per second. */
export interface RateRow {
  channel: number;
  name: string;
  in: number;
  out: number;
  judgement: Judgement;
}

export type Order = "channel" | "rate";

/** As the configuration names it. The last channel is T0, which isn't a detector's. */
export function nameOf(names: readonly string[], channel: number, count: number): string {
  return names[channel] || (channel === count - 1 ? "T0" : `Channel ${channel}`);
}

export function rowsOf(counted: Counted, names: readonly string[]): RateRow[] {
  const last = counted.in.length - 1;
  const judgements = judge(counted.in.slice(0, last), counted.out.slice(0, last));
  return Array.from(counted.in, (count, channel) => ({
    channel,
    name: nameOf(names, channel, counted.in.length),
    in: count / counted.seconds,
    out: (counted.out[channel] ?? NaN) / counted.seconds,
    judgement: judgements[channel] ?? "",
  }));
}

/** By rate, the highest first; those of the same rate by channel. */
export function sorted(rows: readonly RateRow[], order: Order): RateRow[] {
  return [...rows].sort((a, b) => (order === "rate" ? b.in - a.in : 0) || a.channel - b.channel);
}

/** Decades of a logarithmic bar. */
const decades = 5;

/** The length of a bar as a part of the longest's, `most`. */
export function barLength(rate: number, most: number, isLog: boolean): number {
  if (!(rate > 0) || !(most > 0)) {
    return 0;
  }
  const part = Math.min(1, rate / most);
  return isLog ? Math.max(0, 1 + Math.log10(part) / decades) : part;
}
