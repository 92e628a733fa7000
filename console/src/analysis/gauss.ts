/** A Gauss peak on a line: area in counts, mean and sigma in bins, counts of the bin `middle`, change by bin. */
export type PeakParameters = readonly [area: number, mean: number, sigma: number, level: number, slope: number];

const rootTwoPi = Math.sqrt(2 * Math.PI);
/** Full width at half maximum of sigma 1. */
export const fwhmOfSigma = 2 * Math.sqrt(2 * Math.LN2);

export function peakAt(bin: number, [area, mean, sigma, level, slope]: PeakParameters, middle: number): number {
  const z = (bin - mean) / sigma;
  return (area / (sigma * rootTwoPi)) * Math.exp(-0.5 * z * z) + level + slope * (bin - middle);
}

/** The derivatives of that by the parameters. */
export function peakGradientAt(bin: number, [area, mean, sigma]: PeakParameters, middle: number): number[] {
  const z = (bin - mean) / sigma;
  const shape = Math.exp(-0.5 * z * z) / (sigma * rootTwoPi);
  return [shape, (area * shape * z) / sigma, (area * shape * (z * z - 1)) / sigma, 1, bin - middle];
}
