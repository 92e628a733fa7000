import { peakAt, type PeakParameters } from "../../src/analysis/gauss";

/** Numbers in [0, 1), the same for the same seed. */
export function random(seed: number): () => number {
  let state = seed >>> 0;
  return () => {
    state = (state + 0x6d2b79f5) >>> 0;
    let mixed = Math.imul(state ^ (state >>> 15), state | 1);
    mixed ^= mixed + Math.imul(mixed ^ (mixed >>> 7), mixed | 61);
    return ((mixed ^ (mixed >>> 14)) >>> 0) / 2 ** 32;
  };
}

/** By the product of uniform numbers, in pieces that stay above the least double. */
export function poisson(mean: number, next: () => number): number {
  let count = 0;
  for (let left = mean; left > 0; left -= 500) {
    const limit = Math.exp(-Math.min(left, 500));
    for (let product = next(); product > limit; product *= next()) {
      ++count;
    }
  }
  return count;
}

export function noisyPeak(parameters: PeakParameters, bins: number, middle: number, next: () => number): number[] {
  return Array.from({ length: bins }, (_, bin) => poisson(peakAt(bin, parameters, middle), next));
}

export function meanAndSpread(values: readonly number[]): { mean: number; spread: number } {
  const mean = values.reduce((sum, value) => sum + value, 0) / values.length;
  const squares = values.reduce((sum, value) => sum + (value - mean) ** 2, 0);
  return { mean, spread: Math.sqrt(squares / (values.length - 1)) };
}
