/** Whole bins, both ends included. */
export interface Range {
  from: number;
  to: number;
}

/** What a region holds, in bins. Null is what can't be told: nothing stands above the background. */
export interface RegionFigures {
  gross: number;
  net: number;
  netError: number;
  centroid: number | null;
  /** Full width at half maximum: where the counts above the background cross half of their greatest height. */
  fwhm: number | null;
  background: Background;
}

/** A line through the mean counts of the outermost bins on both sides. */
export interface Background {
  /** So many bins on each side. */
  edge: number;
  left: number;
  right: number;
  at: (bin: number) => number;
}

export const leastBins = 5;

/** The range as whole bins within `bins`, its ends in order; null when fewer than five are left. */
export function rangeWithin(a: number, b: number, bins: number): Range | null {
  const from = Math.max(0, Math.round(Math.min(a, b)));
  const to = Math.min(bins - 1, Math.round(Math.max(a, b)));
  return to - from + 1 >= leastBins ? { from, to } : null;
}

export function backgroundOf(counts: ArrayLike<number>, { from, to }: Range): Background {
  const edge = Math.max(1, Math.round((to - from + 1) / 10));
  const left = sum(counts, from, from + edge - 1) / edge;
  const right = sum(counts, to - edge + 1, to) / edge;
  const first = from + (edge - 1) / 2;
  const slope = (right - left) / (to - from + 1 - edge);
  return { edge, left, right, at: (bin) => left + slope * (bin - first) };
}

/**
 * Gross is the sum of the n bins; net is gross − n · (left + right) / 2. The edges' counts enter both, which the
 * error of net, for counts that fluctuate as the root, takes into account.
 */
export function figuresOf(counts: ArrayLike<number>, range: Range): RegionFigures {
  const background = backgroundOf(counts, range);
  const bins = range.to - range.from + 1;
  const { edge, left, right } = background;
  const gross = sum(counts, range.from, range.to);
  const net = gross - (bins * (left + right)) / 2;
  const edges = edge * (left + right);
  const variance = gross - edges + edges * (1 - bins / (2 * edge)) ** 2;
  return {
    gross,
    net,
    netError: Math.sqrt(variance),
    centroid: net > 0 ? centroidOf(counts, range, background, net) : null,
    fwhm: fwhmOf(counts, range, background),
    background,
  };
}

function sum(counts: ArrayLike<number>, from: number, to: number): number {
  let total = 0;
  for (let bin = from; bin <= to; ++bin) {
    total += counts[bin]!;
  }
  return total;
}

function centroidOf(
  counts: ArrayLike<number>,
  { from, to }: Range,
  background: Background,
  net: number,
): number | null {
  let moment = 0;
  for (let bin = from; bin <= to; ++bin) {
    moment += (bin - from) * (counts[bin]! - background.at(bin));
  }
  const centroid = from + moment / net;
  // A net of next to nothing leads anywhere.
  return centroid >= from && centroid <= to ? centroid : null;
}

/**
 * Noise makes counts cross the half several times on a side: the middle of the innermost and the outermost
 * crossing is taken, and for the height the greatest mean of some bins where a region has many.
 */
function fwhmOf(counts: ArrayLike<number>, { from, to }: Range, background: Background): number | null {
  const height = (bin: number): number => counts[bin]! - background.at(bin);
  const { top, half } = halfMaximum(height, from, to);
  const side = (end: number): number | null => {
    const [inner, outer] = [crossing(height, half, top, end), crossing(height, half, end, top)];
    return inner === null || outer === null ? null : (inner + outer) / 2;
  };
  const [low, high] = [side(from), side(to)];
  return half > 0 && low !== null && high !== null ? high - low : null;
}

type Height = (bin: number) => number;

function halfMaximum(height: Height, from: number, to: number): { top: number; half: number } {
  const arm = Math.floor((to - from + 1) / 64);
  let best = { top: from, half: 0 };
  for (let bin = from + arm; bin + arm <= to; ++bin) {
    let total = 0;
    for (let i = bin - arm; i <= bin + arm; ++i) {
      total += height(i);
    }
    const half = total / (2 * arm + 1) / 2;
    best = half > best.half ? { top: bin, half } : best;
  }
  return best;
}

/** Where heights first pass the level on the way between two bins, in a straight line from bin to bin. */
function crossing(height: Height, level: number, start: number, end: number): number | null {
  const step = Math.sign(end - start);
  for (let bin = start; bin !== end; bin += step) {
    const [here, next] = [height(bin) - level, height(bin + step) - level];
    if (here > 0 !== next > 0) {
      return bin + (step * here) / (here - next);
    }
  }
  return null;
}
