import { type Calibration, calibrationOf, type KnownPoint, positionOf } from "../../analysis/calibration";
import type { Range } from "../../analysis/region";

/** A line that was fitted in a curve, and where it belongs. */
export interface KnownLine extends KnownPoint {
  unit: string;
}

/** With the line, in the place of what was known in the range that it was fitted in. */
export function withLine(lines: readonly KnownLine[], line: KnownLine, { from, to }: Range): KnownLine[] {
  const others = lines.filter(({ bin }) => bin < from || bin > to);
  return [...others, line].sort((a, b) => a.bin - b.bin);
}

/** The axis through the lines of this unit; null when none rises through them. */
export function axisThrough(lines: readonly KnownLine[], unit: string): Calibration | null {
  return calibrationOf(lines.filter((line) => line.unit === unit), unit);
}

/** How far the line stands from where the axis has it; null where the axis has another unit. */
export function residualOf(line: KnownLine, axis: Calibration): number | null {
  return line.unit === axis.unit ? line.position - positionOf(line.bin, axis) : null;
}
