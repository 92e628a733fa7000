import { roundTicks } from "./ticks";

/** What an axis says of its cells: `zero` is where 0 stands, from the edge of cell 0. */
export interface HeatAxis {
  label: string;
  cellsPerUnit: number;
  zero: number;
}

/** The numbers of the cells, each at the middle of its cell. */
export function cellAxis(label: string): HeatAxis {
  return { label, cellsPerUnit: 1, zero: 0.5 };
}

export interface AxisTick {
  at: number;
  text: string;
}

/** Where on the axis ticks stand, from the edge of cell 0, and what they say; about `count` at most. */
export function axisTicks(axis: HeatAxis, from: number, to: number, count: number): AxisTick[] {
  const { cellsPerUnit, zero } = axis;
  const leastStep = cellsPerUnit === 1 ? 1 : 0;
  const values = roundTicks((from - zero) / cellsPerUnit, (to - zero) / cellsPerUnit, count, leastStep);
  return values.map((value) => ({ at: value * cellsPerUnit + zero, text: String(value) }));
}
