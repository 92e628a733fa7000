import { binOf, type Calibration, positionOf } from "./calibration";

/** Sums of `factor` bins each; the last one of what is left. */
export function rebinned(counts: ArrayLike<number>, factor: number): Float64Array {
  const sums = new Float64Array(Math.ceil(counts.length / factor));
  for (let i = 0; i < counts.length; ++i) {
    sums[Math.floor(i / factor)]! += counts[i]!;
  }
  return sums;
}

/** The lower edges of bins that were summed so, on the axis of the calibration. */
export function edgesOf(bins: number, factor: number, calibration: Calibration): Float64Array {
  const edges = new Float64Array(Math.ceil(bins / factor));
  for (let i = 0; i < edges.length; ++i) {
    edges[i] = positionOf(i * factor - 0.5, calibration);
  }
  return edges;
}

/**
 * Counts of bins of one calibration as bins of another would show them, each bin's counts spread evenly over it.
 * No count is lost but those beyond the ends.
 */
export function resampled(
  counts: ArrayLike<number>,
  from: Calibration,
  to: Calibration,
  bins: number,
): Float64Array {
  const below = new Float64Array(counts.length + 1);
  for (let i = 0; i < counts.length; ++i) {
    below[i + 1] = below[i]! + counts[i]!;
  }
  const countsBelow = (edge: number): number => {
    const at = Math.min(Math.max(binOf(positionOf(edge - 0.5, to), from) + 0.5, 0), counts.length);
    const whole = Math.min(Math.floor(at), counts.length - 1);
    return counts.length === 0 ? 0 : below[whole]! + (at - whole) * counts[whole]!;
  };
  const result = new Float64Array(bins);
  for (let i = 0; i < bins; ++i) {
    result[i] = countsBelow(i + 1) - countsBelow(i);
  }
  return result;
}
