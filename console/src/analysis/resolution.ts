import type { Calibration } from "./calibration";
import { positionOf } from "./calibration";
import type { PeakFit } from "./fit";
import { fwhmOfSigma } from "./gauss";

export interface Measured {
  value: number;
  error: number;
}

/** What a fit says on the axis of a calibration. */
export interface CalibratedPeak {
  mean: Measured;
  fwhm: Measured;
  /** FWHM / mean in %; null when the peak isn't above zero. */
  resolution: Measured | null;
}

export function calibrated(fit: PeakFit, calibration: Calibration): CalibratedPeak {
  const { gain } = calibration;
  const mean = { value: positionOf(fit.mean, calibration), error: gain * fit.meanError };
  const factor = gain * fwhmOfSigma;
  const fwhm = { value: factor * fit.sigma, error: factor * fit.sigmaError };
  if (!(mean.value > 0)) {
    return { mean, fwhm, resolution: null };
  }
  const share = fwhm.value / mean.value;
  const covariance = gain * factor * fit.meanSigmaCovariance;
  const relative =
    (fwhm.error / fwhm.value) ** 2 +
    (mean.error / mean.value) ** 2 -
    (2 * covariance) / (fwhm.value * mean.value);
  return { mean, fwhm, resolution: { value: 100 * share, error: 100 * share * Math.sqrt(Math.max(0, relative)) } };
}

/** A value and its error with the digits that the error leaves: 661.66 ± 0.12. */
export function withError({ value, error }: Measured): string {
  if (!Number.isFinite(value) || !Number.isFinite(error)) {
    return "–";
  }
  const digits = error > 0 ? Math.min(8, Math.max(0, 1 - Math.floor(Math.log10(error)))) : 2;
  return `${value.toFixed(digits)} ± ${error.toFixed(digits)}`;
}
