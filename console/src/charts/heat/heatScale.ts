import { type ColourTable, tableSize } from "../colourTables";

/** Which counts the colours stand for; counts beyond have the first or last one. */
export interface HeatScale {
  low: number;
  high: number;
  isLog: boolean;
}

/** Where a logarithmic scale begins at the least, so that a single count isn't at its foot. */
const logFoot = 0.5;

/** Up to the largest count; from 0, or on a logarithmic scale from half of the smallest one that isn't. */
export function automaticScale({ least, most }: { least: number; most: number }, isLog: boolean): HeatScale {
  return { low: isLog ? Math.max(logFoot, least / 2) : 0, high: Math.max(1, most), isLog };
}

/** As it was set, but a logarithmic scale can't begin at 0. */
export function fixedScale(low: number, high: number, isLog: boolean): HeatScale {
  const from = isLog ? Math.max(low, logFoot) : low;
  return { low: from, high: Math.max(high, from * 1.000001), isLog };
}

/** Why these can't be the ends of a scale; null when they can. */
export function scaleFault(low: number, high: number): string | null {
  if (!Number.isFinite(low) || !Number.isFinite(high) || low < 0) {
    return "The minimum and the maximum must be numbers of 0 or more.";
  }
  return low < high ? null : "The maximum must be above the minimum.";
}

/** How far up the scale a count is, from 0 to 1. */
export function shareOf(count: number, { low, high, isLog }: HeatScale): number {
  const share = isLog ? Math.log(count / low) / Math.log(high / low) : (count - low) / (high - low);
  return share > 0 ? Math.min(share, 1) : 0;
}

/** The pixel for a count that isn't 0. */
export function pixelOf(scale: HeatScale, table: ColourTable): (count: number) => number {
  const { pixels } = table;
  const begin = scale.isLog ? Math.log(scale.low) : scale.low;
  const factor = (tableSize - 1) / ((scale.isLog ? Math.log(scale.high) : scale.high) - begin);
  return (count) => {
    const level = Math.round(((scale.isLog ? Math.log(count) : count) - begin) * factor);
    return pixels[level > 0 ? (level < tableSize ? level : tableSize - 1) : 0]!;
  };
}
