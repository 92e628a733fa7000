import { loadPart } from "../base/loadPart";
import { fwhmOfSigma, peakAt, peakGradientAt, type PeakParameters } from "./gauss";
import { dot, inverseOf, type Matrix, multiplied } from "./matrix";
import { figuresOf, type Range } from "./region";

/** A Gauss peak on a line, fitted to the counts of a range; positions and widths in bins. */
export interface PeakFit {
  range: Range;
  area: number;
  mean: number;
  sigma: number;
  level: number;
  slope: number;
  areaError: number;
  meanError: number;
  sigmaError: number;
  meanSigmaCovariance: number;
  chiSquare: number;
  degrees: number;
  /** The fitted counts of a bin. */
  at: (bin: number) => number;
}

/** A fit that can't be trusted. `message` is for the operator: why, and what to do. */
export class NoFit extends Error {}

const parameterCount = 5;
const mostBins = 4096;
/** Weights by the counts pull a fit down, so that only the first pass has these; the others, by the fit before. */
const iterationsOfPasses = [20, 6, 6];

/** Fails with NoFit, or with PartMissing when what fits can't be loaded. */
export async function fitPeak(counts: ArrayLike<number>, range: Range): Promise<PeakFit> {
  const points = pointsOf(counts, range);
  let parameters = guess(counts, range);
  let weights = points.y.map(weightOf);
  for (const iterations of iterationsOfPasses) {
    parameters = await minimise(points, weights, parameters, iterations);
    weights = points.x.map((bin) => weightOf(peakAt(bin, parameters, points.middle)));
  }
  return judged(points, weights, stepped(points, weights, parameters), range);
}

/** The library stops a little before the minimum of a peak with many counts: one Gauss-Newton step gets there. */
function stepped(points: Points, weights: readonly number[], parameters: PeakParameters): PeakParameters {
  const { normal, descent, chiSquare } = normalEquations(points, weights, parameters);
  const covariance = inverseOf(normal);
  if (covariance === null) {
    return parameters;
  }
  const step = multiplied(covariance, descent);
  const next = parameters.map((value, i) => value + step[i]!) as unknown as PeakParameters;
  return next[2] > 0 && normalEquations(points, weights, next).chiSquare <= chiSquare ? next : parameters;
}

function weightOf(count: number): number {
  return 1 / Math.max(count, 1);
}

interface Points {
  x: number[];
  y: number[];
  middle: number;
}

function pointsOf(counts: ArrayLike<number>, { from, to }: Range): Points {
  const length = to - from + 1;
  if (length <= parameterCount) {
    throw new NoFit(`A fit takes more than ${parameterCount} bins: mark a wider region.`);
  }
  if (length > mostBins) {
    throw new NoFit(`A fit takes ${mostBins} bins at most, here are ${length}: mark the peak alone.`);
  }
  const x = Array.from({ length }, (_, i) => from + i);
  return { x, y: x.map((bin) => counts[bin]!), middle: (from + to) / 2 };
}

/** Where to begin: what the region's figures say. */
function guess(counts: ArrayLike<number>, range: Range): PeakParameters {
  const { net, netError, centroid, fwhm, background } = figuresOf(counts, range);
  if (centroid === null || fwhm === null || net < 2 * netError) {
    throw new NoFit("No peak stands out here: count longer, or mark the peak and a little on both sides.");
  }
  // Noise splits a peak of few counts: the width that its area and height ask for is then the better one.
  const height = Math.max(...pointsOf(counts, range).y.map((count, i) => count - background.at(range.from + i)));
  const sigma = Math.max(fwhm / fwhmOfSigma, net / (height * 2.51), 0.3);
  const middle = (range.from + range.to) / 2;
  return [net, centroid, sigma, background.at(middle), background.at(middle + 1) - background.at(middle)];
}

/**
 * The least weighted sum of squares. All is scaled to about one, as the damping is the same for every parameter.
 * The roots of the weights multiply values and model: the library's own weights enter its equations wrongly.
 */
async function minimise(
  points: Points,
  weights: readonly number[],
  start: PeakParameters,
  iterations: number,
): Promise<PeakParameters> {
  const { levenbergMarquardt } = await loadPart("The fit", () => import("ml-levenberg-marquardt"));
  const { x, y, middle } = points;
  const roots = weights.map(Math.sqrt);
  const scale = [start[0], start[2], start[2], start[0] / start[2], start[0] / start[2] ** 2];
  const shift = [0, start[1], 0, 0, 0];
  const real = (scaled: readonly number[]): PeakParameters =>
    scaled.map((value, i) => value * scale[i]! + shift[i]!) as unknown as PeakParameters;
  const width = (x.length - 1) / scale[1]!;
  const fitted = levenbergMarquardt(
    { x: x.map((_, i) => i), y: y.map((count, i) => count * roots[i]!) },
    (scaled) => {
      const parameters = real(scaled);
      return (i) => roots[i]! * peakAt(x[i]!, parameters, middle);
    },
    {
      initialValues: start.map((value, i) => (value - shift[i]!) / scale[i]!),
      minValues: [0, -width, 0.1, -1e9, -1e9],
      maxValues: [1e9, width, width + 1, 1e9, 1e9],
      jacobianFunction: (scaled) => {
        const parameters = real(scaled);
        return (i) => peakGradientAt(x[i]!, parameters, middle).map((value, k) => value * roots[i]! * scale[k]!);
      },
      maxIterations: iterations,
    },
  );
  return real(fitted.parameterValues);
}

/** The fit with its errors, from the inverse of Jᵀ W J. */
function judged(points: Points, weights: readonly number[], parameters: PeakParameters, range: Range): PeakFit {
  const { middle } = points;
  const { normal, descent, chiSquare } = normalEquations(points, weights, parameters);
  const covariance = inverseOf(normal);
  const [area, mean, sigma, level, slope] = parameters;
  // How far below the minimum is expected to lie, in units of chi².
  const distance = covariance === null ? Infinity : dot(descent, multiplied(covariance, descent));
  if (covariance === null || !(distance < 0.01) || !(area > 0) || mean < range.from || mean > range.to) {
    throw new NoFit("The fit found no minimum: mark one peak and a little on both sides, or count longer.");
  }
  const error = (i: number): number => Math.sqrt(covariance[i]![i]!);
  return {
    range, area, mean, sigma, level, slope, chiSquare,
    areaError: error(0),
    meanError: error(1),
    sigmaError: error(2),
    meanSigmaCovariance: covariance[1]![2]!,
    degrees: points.x.length - parameterCount,
    at: (bin) => peakAt(bin, parameters, middle),
  };
}

function normalEquations(points: Points, weights: readonly number[], parameters: PeakParameters) {
  const normal: Matrix = Array.from({ length: parameterCount }, () => new Array<number>(parameterCount).fill(0));
  const descent = new Array<number>(parameterCount).fill(0);
  let chiSquare = 0;
  points.x.forEach((bin, i) => {
    const gradient = peakGradientAt(bin, parameters, points.middle);
    const residual = points.y[i]! - peakAt(bin, parameters, points.middle);
    const weight = weights[i]!;
    chiSquare += weight * residual * residual;
    gradient.forEach((a, k) => {
      descent[k]! += weight * a * residual;
      gradient.forEach((b, l) => (normal[k]![l]! += weight * a * b));
    });
  });
  return { normal, descent, chiSquare };
}
