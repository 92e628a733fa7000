// Which channels stand out.

export type Judgement = "" | "dead" | "blocked" | "noisy";

export const judgementMarks: Record<Judgement, string> = { "": "", dead: "✕", blocked: "⊘", noisy: "▲" };

/** So many counts must be expected before none means something: by chance that is seen once in 22 000 times. */
export const leastExpected = 10;
/** So many times the median, and so many robust standard deviations above it. */
export const noisyFactor = 5;
export const noisySigmas = 5;

export const rule =
  `dead: no count while the median of the channels that count is at least ${leastExpected}; ` +
  `blocked: ${leastExpected} counts in or more, none out; ` +
  `noisy: over ${noisyFactor} times that median and more than ${noisySigmas} robust standard deviations ` +
  "(1.48 times the median distance from the median) above it. The last channel, T0, is not judged.";

/** By what each channel counted, in and out. */
export function judge(countsIn: ArrayLike<number>, countsOut: ArrayLike<number>): Judgement[] {
  const counting = Array.from(countsIn).filter((count) => count > 0);
  const median = medianOf(counting);
  const spread = 1.4826 * medianOf(counting.map((count) => Math.abs(count - median)));
  const limit = Math.max(noisyFactor * median, median + noisySigmas * spread);
  return Array.from(countsIn, (count, i) => {
    if (count === 0) {
      return median >= leastExpected ? "dead" : "";
    }
    if (count >= leastExpected && countsOut[i] === 0) {
      return "blocked";
    }
    return count > limit && count >= leastExpected ? "noisy" : "";
  });
}

/** NaN of nothing. */
export function medianOf(values: readonly number[]): number {
  const sorted = [...values].sort((a, b) => a - b);
  const middle = sorted.length >> 1;
  return sorted.length % 2 === 1 ? sorted[middle]! : (sorted[middle - 1]! + sorted[middle]!) / 2;
}
