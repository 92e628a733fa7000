import { binOf, type Calibration, inBins, isSame, positionOf } from "../../analysis/calibration";
import type { PeakFit } from "../../analysis/fit";
import { edgesOf, rebinned, resampled } from "../../analysis/rebin";
import type { Curve, CurveSet, Span } from "../../charts/curves";

// From counts by bin to what the chart shows. The axis is that of the analysed curve.

/** Counts of a channel, live or kept. */
export interface ShownCurve {
  label: string;
  counts: ArrayLike<number>;
  calibration: Calibration;
  /** Told apart from the live ones. */
  isCopy: boolean;
}

export const rebinFactors = [1, 2, 4, 8, 16, 32, 64] as const;

/** The counts as bins of the axis would show them; of another unit, or none, they are taken bin by bin. */
export function onAxis(curve: ShownCurve, axis: Calibration, bins: number): ArrayLike<number> {
  const { calibration, counts } = curve;
  const isBinByBin = axis.unit === inBins.unit || calibration.unit !== axis.unit || isSame(calibration, axis);
  return isBinByBin ? counts : resampled(counts, calibration, axis, bins);
}

export function binsOf(curves: readonly ShownCurve[]): number {
  return Math.max(0, ...curves.map(({ counts }) => counts.length));
}

/** Like that of no curve. */
export const fitColour = "ink";

/** `fit` is drawn over the curves. */
export function curveSetOf(
  curves: readonly ShownCurve[],
  axis: Calibration,
  factor: number,
  fit: PeakFit | null,
): CurveSet {
  const bins = binsOf(curves);
  const drawn: Curve[] = curves.map((curve, colour) => ({
    label: curve.label,
    colour,
    values: summed(onAxis(curve, axis, bins), bins, factor),
    ...(curve.isCopy ? { dashed: true } : {}),
  }));
  if (fit !== null && bins > 0) {
    const values = fitValues(fit, bins, factor);
    drawn.push({ label: "Fit", colour: fitColour, values, dashed: true, gaps: true });
  }
  return { x: edgesOf(bins, factor, axis), curves: drawn, steps: true };
}

/** With nothing counted in bins that the block doesn't have. */
function summed(counts: ArrayLike<number>, bins: number, factor: number): ArrayLike<number> {
  const values = factor === 1 ? counts : rebinned(counts, factor);
  const length = Math.ceil(bins / factor);
  if (values.length === length) {
    return values;
  }
  const longer = new Float64Array(length);
  longer.set(values);
  return longer;
}

/** What the fit expects in the summed bins; NaN where it doesn't reach. */
function fitValues(fit: PeakFit, bins: number, factor: number): Float64Array {
  const values = new Float64Array(Math.ceil(bins / factor)).fill(NaN);
  const { from, to } = fit.range;
  const behind = Math.min(values.length, Math.floor((to + 1) / factor));
  for (let i = Math.ceil(from / factor); i < behind; ++i) {
    values[i] = 0;
    for (let bin = i * factor; bin < (i + 1) * factor; ++bin) {
      values[i]! += Math.max(0, fit.at(bin));
    }
  }
  return values;
}

/** A part of the axis in bins, as text for the address: it stays when the axis is calibrated anew. */
export function spanText(span: Span, axis: Calibration): string | null {
  return span === null ? null : span.map((position) => String(round(binOf(position, axis)))).join("to");
}

export function spanOf(text: string | null, axis: Calibration): Span {
  const [from = NaN, to = NaN] = (text ?? "").split("to").map(Number);
  const isSpan = text !== null && to > from && Number.isFinite(to - from);
  return isSpan ? [positionOf(from, axis), positionOf(to, axis)] : null;
}

function round(value: number): number {
  return Math.round(value * 100) / 100;
}

/** With as many digits as a bin is wide. */
export function positionText(position: number, { gain, unit }: Calibration): string {
  const digits = Math.min(9, Math.max(0, Math.ceil(-Math.log10(gain) - 1e-9) + (unit === inBins.unit ? 0 : 1)));
  return unit === inBins.unit ? `${unit} ${position.toFixed(digits)}` : `${position.toFixed(digits)} ${unit}`;
}
