import { type ColourTable, colourTables } from "../../charts/colourTables";
import type { HeatWindow } from "../../charts/heat/heatArea";
import { scaleFault } from "../../charts/heat/heatScale";
import type { Span } from "../../charts/curves";

// What the operator chose, as the address has it. An address can say anything.

export function tableNamed(name: string | null): ColourTable {
  return colourTables.find((table) => table.name === name) ?? colourTables[0]!;
}

export const intervalsMs = [500, 1_000, 2_000, 5_000, 10_000] as const;

export function intervalOf(text: string | null): number {
  return intervalsMs.find((known) => String(known) === text) ?? intervalsMs[0];
}

export interface FixedScale {
  low: number;
  high: number;
  /** Why it can't be used; null when it can. */
  fault: string | null;
}

/** "1_250"; null means automatic. */
export function fixedScaleOf(text: string | null): FixedScale | null {
  if (text === null) {
    return null;
  }
  const [low = NaN, high = NaN] = text.split("_").map(numberOf);
  return { low, high, fault: scaleFault(low, high) };
}

// Number("") is 0, which nobody typed.
function numberOf(text: string): number {
  return text.trim() === "" ? NaN : Number(text);
}

/** "2_10_0_64", columns before rows; an axis without numbers is shown whole. */
export function windowOf(text: string | null): HeatWindow {
  const [left = NaN, right = NaN, top = NaN, bottom = NaN] = (text ?? "").split("_").map(numberOf);
  return { x: spanOf(left, right), y: spanOf(top, bottom) };
}

export function textOf({ x, y }: HeatWindow): string | null {
  return x === null && y === null ? null : `${spanText(x)}_${spanText(y)}`;
}

function spanOf(from: number, to: number): Span {
  return Number.isFinite(from) && Number.isFinite(to) && from < to ? [from, to] : null;
}

function spanText(span: Span): string {
  return span === null ? "_" : span.map((edge) => String(Number(edge.toFixed(3)))).join("_");
}
