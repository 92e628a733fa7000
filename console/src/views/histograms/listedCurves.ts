import type { Calibration } from "../../analysis/calibration";
import type { Copy } from "./copies";
import type { ShownCurve } from "./display";
import type { LiveCurve } from "./liveCurves";

export interface ListedCurve extends ShownCurve {
  key: string;
  /** The live curve that it is or was; null when it comes from a file. */
  source: string | null;
}

/**
 * The live curves and the copies behind them, each on the axis that its channel has now: the bins of a copy are
 * the same however the axis was calibrated since.
 */
export function listedCurves(
  live: readonly LiveCurve[],
  copies: readonly Copy[],
  calibrationOf: (curve: string) => Calibration,
): ListedCurve[] {
  return [
    ...live.map((curve) => ({
      ...curve,
      source: curve.key,
      calibration: calibrationOf(curve.key),
      isCopy: false,
    })),
    ...copies.map((copy) => ({
      ...copy,
      calibration: copy.source === null ? copy.calibration : calibrationOf(copy.source),
      isCopy: true,
    })),
  ];
}
