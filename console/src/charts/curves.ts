import { short } from "../base/format";

/** A curve to be drawn: values by position, in ascending order of x. */
export interface Curve {
  label: string;
  colour: CurveColour;
  values: ArrayLike<number>;
  dashed?: boolean;
  /** Some values are NaN: nothing is drawn there. */
  gaps?: boolean;
}

/** Which of the colours of curves, or that of text. */
export type CurveColour = number | "ink";

/** Curves over common positions. */
export interface CurveSet {
  x: Float64Array;
  curves: Curve[];
  /** Drawn as steps from each position to the next, as counts of bins are; else from point to point. */
  steps: boolean;
}

/** What of the curves is looked at; null shows all. */
export type Span = readonly [number, number] | null;

/** A part of the axis that stands out. */
export interface Band {
  from: number;
  to: number;
  label: string;
  selected: boolean;
}

// Searched for: those that lie farthest apart to all kinds of colour vision, and stand out from the ground.
const light = ["#4477ff", "#662200", "#dd44bb", "#446655", "#aa7700", "#664477", "#1111cc", "#888855"];
const dark = ["#77ffaa", "#bb7711", "#aa99bb", "#7755ff", "#66aa77", "#ee77ff", "#667777", "#ffbb33"];

export function curveColour(colour: CurveColour, isDark: boolean): string {
  const colours = isDark ? dark : light;
  return colour === "ink" ? inkColour(isDark) : colours[colour % colours.length]!;
}

export function inkColour(isDark: boolean): string {
  return isDark ? "#d5dbe3" : "#24292f";
}

/** The span cut to what there is, of at least `least`; null when it is all of that. */
export function limited(span: Span, low: number, high: number, least: number): Span {
  if (span === null || high <= low) {
    return null;
  }
  const width = Math.min(Math.max(span[1] - span[0], least), high - low);
  const from = Math.min(Math.max(span[0], low), high - width);
  return width >= high - low ? null : [from, from + width];
}

/** Zoomed by a factor about a position; < 1 shows less. */
export function zoomed(span: readonly [number, number], about: number, factor: number): readonly [number, number] {
  return [about - (about - span[0]) * factor, about + (span[1] - about) * factor];
}

/** The index of the last position that isn't above x; -1 below the first. */
export function indexAt(x: Float64Array, position: number): number {
  let low = 0;
  let high = x.length;
  while (low < high) {
    const middle = (low + high) >> 1;
    if (x[middle]! <= position) {
      low = middle + 1;
    } else {
      high = middle;
    }
  }
  return low - 1;
}

/** The position of a value: the middle of its step, or its point. */
export function centreAt({ x, steps }: CurveSet, index: number): number {
  const last = x.length - 1;
  if (!steps || last < 1) {
    return x[index]!;
  }
  const width = index < last ? x[index + 1]! - x[index]! : x[last]! - x[last - 1]!;
  return x[index]! + width / 2;
}

/** The least and the greatest value that is seen, over all curves; null when nothing is. */
export function extent(set: CurveSet, span: Span): readonly [number, number] | null {
  let [least, most] = [Infinity, -Infinity];
  const from = span === null ? 0 : Math.max(0, indexAt(set.x, span[0]));
  const to = span === null ? set.x.length - 1 : indexAt(set.x, span[1]);
  for (const { values } of set.curves) {
    for (let i = from; i <= to; ++i) {
      const value = values[i]!;
      if (value < least) {
        least = value;
      }
      if (value > most) {
        most = value;
      }
    }
  }
  return least <= most ? [least, most] : null;
}

/** What stands at the ticks of an axis; large numbers are shortened, as they would run into each other. */
export function tickTexts(ticks: readonly number[]): string[] {
  const isLarge = ticks.some((tick) => Math.abs(tick) >= 100_000);
  return ticks.map((tick) => (isLarge ? short(tick) : String(Number(tick.toPrecision(6)))));
}

/** Where a count of one stands well above the axis. */
export const logFloor = 0.5;

/** The range of the vertical axis. */
export function valueRange(seen: readonly [number, number] | null, isLog: boolean): [number, number] {
  if (isLog) {
    return [logFloor, Math.max(10, (seen?.[1] ?? 0) * 1.6)];
  }
  const [least, most] = seen ?? [0, 1];
  const room = (most - Math.min(least, 0)) * 0.05;
  return [least < 0 ? least - room : 0, most > 0 ? most + room : Math.max(1, most + room)];
}
