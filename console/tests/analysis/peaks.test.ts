import { describe, expect, it } from "vitest";
import { peakAt } from "../../src/analysis/gauss";
import { clearestPeak } from "../../src/analysis/peaks";
import { poisson, random } from "./random";

describe("the clearest peak", () => {
  it("is found on a continuum with an edge, with its background on both sides", () => {
    for (const [seed, area] of [[1, 400], [2, 4000], [3, 100_000]] as const) {
      const next = random(seed);
      const counts = Array.from({ length: 2048 }, (_, bin) =>
        poisson(peakAt(bin, [area, 662, 20, 0, 0], 0) + (bin < 477 ? area / 200 : area / 2000), next),
      );
      const range = clearestPeak(counts, { from: 0, to: 2047 })!;
      expect(range.from).toBeGreaterThan(662 - 7 * 20);
      expect(range.from).toBeLessThan(662 - 2 * 20);
      expect(range.to).toBeGreaterThan(662 + 2 * 20);
      expect(range.to).toBeLessThan(662 + 7 * 20);
    }
  });

  it("is marked whole as soon as it is found, after fifty counts", () => {
    for (let seed = 1; seed <= 50; ++seed) {
      const next = random(seed);
      const counts = Array.from({ length: 2048 }, (_, bin) =>
        poisson(peakAt(bin, [50, 684, 20, 0, 0], 0) + (bin < 500 ? 0.25 : 0.01), next),
      );
      const { from, to } = clearestPeak(counts, { from: 0, to: 2047 })!;
      expect(from).toBeLessThan(684 - 2 * 20);
      expect(to).toBeGreaterThan(684 + 2 * 20);
      expect(to - from).toBeLessThan(12 * 20);
    }
  });

  it("is searched for only where the operator looks", () => {
    const [high, low] = [[1e6, 300, 5, 10, 0], [1e4, 700, 5, 0, 0]] as const;
    const counts = Array.from({ length: 1000 }, (_, bin) => peakAt(bin, high, 0) + peakAt(bin, low, 0));
    const range = clearestPeak(counts, { from: 500, to: 999 })!;
    expect(range.from + range.to).toBeGreaterThan(1390);
    expect(range.from + range.to).toBeLessThan(1410);
  });

  it("is the next one where it is marked already", () => {
    const [high, low] = [[1e6, 300, 5, 10, 0], [1e4, 700, 5, 0, 0]] as const;
    const counts = Array.from({ length: 1000 }, (_, bin) => peakAt(bin, high, 0) + peakAt(bin, low, 0));
    const all = { from: 0, to: 999 };
    const first = clearestPeak(counts, all)!;
    expect((first.from + first.to) / 2).toBeCloseTo(300, -1);
    const second = clearestPeak(counts, all, [first])!;
    expect((second.from + second.to) / 2).toBeCloseTo(700, -1);
    expect(clearestPeak(counts, all, [first, second])).toBeNull();
  });

  it("is none of noise, of an edge, of nothing", () => {
    const next = random(5);
    expect(clearestPeak(Array.from({ length: 2048 }, () => poisson(20, next)), { from: 0, to: 2047 })).toBeNull();
    const edge = Array.from({ length: 500 }, (_, bin) => (bin < 250 ? 1000 : 0));
    expect(clearestPeak(edge, { from: 0, to: 499 })).toBeNull();
    expect(clearestPeak(new Uint32Array(100), { from: 0, to: 99 })).toBeNull();
    expect(clearestPeak([], { from: 0, to: -1 })).toBeNull();
  });
});
