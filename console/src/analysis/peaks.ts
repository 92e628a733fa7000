import { fwhmOfSigma } from "./gauss";
import type { Range } from "./region";

// A window is compared with its two sides, each half as wide: what stands above both is a peak.

/** The range about the peak that stands out most between the bins, but for those marked; null when none does. */
export function clearestPeak(
  counts: ArrayLike<number>,
  within: Range,
  marked: readonly Range[] = [],
): Range | null {
  const { from, to } = within;
  const left = marked.length === 0 ? counts : levelled(counts, marked);
  const below = runningSums(left, from, to);
  const sumOf = (a: number, b: number): number => below[b - from]! - below[a - from]!;
  let best = { clearness: leastClearness, centre: -1, half: 0 };
  for (const half of halfWidths((to - from + 1) / 8)) {
    for (let centre = from + 2 * half; centre + 2 * half <= to; ++centre) {
      if (marked.some((range) => range.from < centre + half && centre - half <= range.to)) {
        continue;
      }
      const inner = sumOf(centre - half, centre + half);
      const side = Math.max(sumOf(centre - 2 * half, centre - half), sumOf(centre + half, centre + 2 * half));
      const clearness = (inner - 2 * side) / Math.sqrt(inner + 4 * side + 1);
      if (clearness > best.clearness) {
        best = { clearness, centre, half };
      }
    }
  }
  return best.centre < 0 ? null : aroundPeak(left, within, best.centre, best.half);
}

/** A straight line from edge to edge in the place of what is in each range. */
function levelled(counts: ArrayLike<number>, ranges: readonly Range[]): Float64Array {
  const level = Float64Array.from(counts);
  for (const { from, to } of ranges) {
    const edge = Math.max(1, Math.floor((to - from + 1) / 10));
    const [left, right] = [meanOf(counts, from, edge), meanOf(counts, to - edge + 1, edge)];
    for (let bin = from; bin <= to && bin < level.length; ++bin) {
      level[bin] = left + ((right - left) * (bin - from)) / Math.max(1, to - from);
    }
  }
  return level;
}

function meanOf(counts: ArrayLike<number>, from: number, bins: number): number {
  let sum = 0;
  for (let bin = from; bin < from + bins; ++bin) {
    sum += counts[bin] ?? 0;
  }
  return sum / bins;
}

/** In standard deviations. */
const leastClearness = 5;
/** So many widths at half maximum on each side show the background too. */
const reach = 1.5;

function halfWidths(most: number): number[] {
  const widths: number[] = [];
  for (let width = 2; width <= most; width = Math.ceil(width * 1.3)) {
    widths.push(width);
  }
  return widths;
}

function runningSums(counts: ArrayLike<number>, from: number, to: number): Float64Array {
  const below = new Float64Array(to - from + 2);
  for (let bin = from; bin <= to; ++bin) {
    below[bin - from + 1] = below[bin - from]! + counts[bin]!;
  }
  return below;
}

/** With fewer counts than this in it, the shape of a window is noise. */
const leastShape = 400;

function aroundPeak(counts: ArrayLike<number>, within: Range, centre: number, half: number): Range {
  const [inner, length] = [centre - half, 2 * half];
  return meanOf(counts, inner, length) * length < leastShape
    ? aroundFew(counts, within, inner, length)
    : aroundShape(counts, within, centre, half);
}

/** About the middle count; as far on each side as for a Gauss peak with two thirds of its counts as near. */
function aroundFew(counts: ArrayLike<number>, within: Range, first: number, bins: number): Range {
  const binWith = (share: number): number => {
    let left = share * meanOf(counts, first, bins) * bins;
    let bin = first;
    while ((left -= counts[bin]!) > 0) {
      ++bin;
    }
    return bin;
  };
  const sigma = (binWith(0.84) - binWith(0.16)) / 2;
  return around(binWith(0.5), Math.max(3, Math.round(reach * fwhmOfSigma * sigma)), within);
}

function around(bin: number, arm: number, { from, to }: Range): Range {
  return { from: Math.max(from, bin - arm), to: Math.min(to, bin + arm) };
}

function aroundShape(counts: ArrayLike<number>, within: Range, centre: number, half: number): Range {
  const { from, to } = within;
  const smooth = smoother(counts, { from, to }, Math.floor(half / 6));
  let top = centre;
  for (let bin = centre - half; bin <= centre + half; ++bin) {
    top = smooth(bin) > smooth(top) ? bin : top;
  }
  const foot = Math.max(smooth(Math.max(from, top - 2 * half)), smooth(Math.min(to, top + 2 * half)));
  const level = (smooth(top) + Math.min(foot, smooth(top))) / 2;
  let [low, high] = [top, top];
  while (low > from && smooth(low) > level) {
    --low;
  }
  while (high < to && smooth(high) > level) {
    ++high;
  }
  // The steeper side is the peak's own: a neighbour or a slope widens the other.
  const arm = Math.max(3, Math.round(reach * 2 * Math.min(top - low, high - top)));
  return around(top, arm, within);
}

/** The mean of so many bins on both sides. */
function smoother(counts: ArrayLike<number>, { from, to }: Range, arm: number): (bin: number) => number {
  return (bin) => {
    const [low, high] = [Math.max(from, bin - arm), Math.min(to, bin + arm)];
    let sum = 0;
    for (let i = low; i <= high; ++i) {
      sum += counts[i]!;
    }
    return sum / (high - low + 1);
  };
}
