import { type Calibration, inBins } from "../../analysis/calibration";
import { short } from "../../base/format";
import { positionText, type ShownCurve } from "./display";

/** The bin under the cursor and the counts of each curve there. */
export function readOut(
  index: number,
  curves: readonly ShownCurve[],
  values: readonly ArrayLike<number>[],
  axis: Calibration,
  factor: number,
): string {
  if (index < 0 || index >= (values[0]?.length ?? 0)) {
    return "";
  }
  const [first, last] = [index * factor, (index + 1) * factor - 1];
  const position = positionText(axis.gain * ((first + last) / 2) + axis.offset, axis);
  const bins = axis.unit === inBins.unit ? "" : factor === 1 ? `  bin ${first}` : `  bins ${first}–${last}`;
  const where = axis.unit === inBins.unit && factor > 1 ? `bins ${first}–${last}` : position;
  const each = curves.map(({ label }, i) => `${label}: ${countText(values[i]?.[index] ?? 0)}`);
  return `${where}${bins}   ${each.join("   ")}`;
}

/** Counts are whole; those that were spread over other bins are not. */
function countText(value: number): string {
  return Number.isInteger(value) ? String(value) : value < 1e6 ? value.toFixed(1) : short(value);
}

export function axisLabel(quantity: string, { unit }: Calibration): string {
  return `${quantity} (${unit})`;
}
