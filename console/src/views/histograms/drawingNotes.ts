import type { Calibration } from "../../analysis/calibration";
import { onAxis, type ShownCurve } from "./display";

/** Curves that are drawn otherwise than a reader might take for granted. */
export function drawingNotes(curves: readonly ShownCurve[], axis: Calibration): string[] {
  const isOther = ({ calibration }: ShownCurve): boolean => calibration.unit !== axis.unit;
  const isSpread = (curve: ShownCurve): boolean => !isOther(curve) && onAxis(curve, axis, 0) !== curve.counts;
  const labels = (are: (curve: ShownCurve) => boolean): string =>
    curves.filter(are).map(({ label }) => label).join(", ");
  const [others, spread] = [labels(isOther), labels(isSpread)];
  return [
    ...(others === "" ? [] : [`Drawn bin by bin, for a calibration of another unit or none: ${others}.`]),
    ...(spread === "" ? [] : [`Counts spread over these bins, for another calibration: ${spread}.`]),
  ];
}
