import { divisions, type Vertical } from "./vertical";

/** Where things stand on the screen, in pixels. */
export interface Layout {
  left: number;
  width: number;
  /** Of each analog trace: the same, or one below the other. */
  bands: Area[];
  /** Of each digital trace. */
  lanes: Area[];
  /** The foot of all of them; times stand below. */
  bottom: number;
}

export interface Area {
  top: number;
  height: number;
}

const margin = { left: 56, right: 10, top: 8, bottom: 36 };
const highestLane = 24;
/** Digital traces have so much of the height at most. */
const lanesPart = 0.45;

/** Of a canvas of this size with so many analog and digital traces. */
export function layoutOf(
  width: number,
  height: number,
  analog: number,
  digital: number,
  isStacked: boolean,
): Layout {
  const room = Math.max(1, height - margin.top - margin.bottom);
  const part = analog === 0 ? 1 : lanesPart;
  const lane = digital === 0 ? 0 : Math.min(highestLane, (room * part) / digital);
  const analogHeight = room - lane * digital;
  const band = isStacked && analog > 0 ? analogHeight / analog : analogHeight;
  const areas = (count: number, top: number, step: number, areaHeight: number): Area[] =>
    Array.from({ length: count }, (_, i) => ({ top: top + i * step, height: areaHeight }));
  return {
    left: margin.left,
    width: Math.max(1, width - margin.left - margin.right),
    bands: areas(analog, margin.top, isStacked ? band : 0, band),
    lanes: areas(digital, margin.top + analogHeight, lane, lane),
    bottom: margin.top + room,
  };
}

/** The part of the samples that is looked at, from the first to the last. */
export type View = readonly [number, number];

export function xOf(sample: number, layout: Layout, view: View): number {
  return layout.left + ((sample - view[0]) / (view[1] - view[0])) * layout.width;
}

export function sampleAt(x: number, layout: Layout, view: View): number {
  return view[0] + ((x - layout.left) / layout.width) * (view[1] - view[0]);
}

export function yOf(value: number, area: Area, vertical: Vertical): number {
  const up = (value - vertical.offset) / vertical.perDivision / divisions;
  return area.top + area.height * (0.5 - up);
}

/** Samples of the view that are furthest above and below the screen; -1 where none is. */
export function beyond(samples: Float64Array, view: View, vertical: Vertical): { above: number; below: number } {
  const half = (divisions / 2) * vertical.perDivision;
  let [high, low] = [vertical.offset + half, vertical.offset - half];
  let [above, below] = [-1, -1];
  const last = Math.min(samples.length - 1, Math.floor(view[1]));
  for (let i = Math.max(0, Math.ceil(view[0])); i <= last; ++i) {
    if (samples[i]! > high) {
      [high, above] = [samples[i]!, i];
    }
    if (samples[i]! < low) {
      [low, below] = [samples[i]!, i];
    }
  }
  return { above, below };
}
