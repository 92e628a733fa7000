import type { Calibration } from "../../analysis/calibration";
import type { Copy } from "./copies";
import type { ShownCurve } from "./display";
import type { LiveCurve } from "./liveCurves";

export interface ListedCurve extends ShownCurve {
  key: string;
  /** The block that counts or counted it; null when it comes from a file. */
  path: string | null;
}

/** The live curves and the copies behind them, each on the axis of its block. */
export function listedCurves(
  live: readonly LiveCurve[],
  copies: readonly Copy[],
  calibrationOf: (path: string) => Calibration,
): ListedCurve[] {
  return [
    ...live.map((curve) => ({ ...curve, calibration: calibrationOf(curve.path), isCopy: false })),
    ...copies.map((copy, i) => ({ ...copy, key: copyKey(i), isCopy: true })),
  ];
}

export function copyKey(index: number): string {
  return `copy ${index}`;
}

/**
 * The chosen curve, or else the first; and all with it, its block's copies on the axis that the block has now: the
 * bins are the same however the axis was calibrated since.
 */
export function withAnalysed(
  listed: readonly ListedCurve[],
  key: string | null,
  calibrationOf: (path: string) => Calibration,
): { curves: ListedCurve[]; analysed: ListedCurve | undefined } {
  const path = (listed.find((curve) => curve.key === key) ?? listed[0])?.path ?? null;
  const curves = listed.map((curve) =>
    curve.isCopy && path !== null && curve.path === path ? { ...curve, calibration: calibrationOf(path) } : curve,
  );
  return { curves, analysed: curves.find((curve) => curve.key === key) ?? curves[0] };
}
