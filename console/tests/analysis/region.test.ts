import { describe, expect, it } from "vitest";
import { peakAt } from "../../src/analysis/gauss";
import { figuresOf, rangeWithin } from "../../src/analysis/region";
import { meanAndSpread, noisyPeak, random } from "./random";

describe("a region's figures", () => {
  it("are gross, net over a line through the edges, centroid and width of a triangle", () => {
    //               0  1  2   3   4   5   6  7  8
    const counts = [99, 4, 4, 14, 24, 14, 4, 4, 99];
    const figures = figuresOf(counts, { from: 1, to: 7 });
    expect(figures.gross).toBe(68);
    expect(figures.net).toBe(40); // 68 - 7 * (4 + 4) / 2
    expect(figures.centroid).toBe(4);
    expect(figures.fwhm).toBe(2); // half of 20 above 4: at 3 and at 5
    expect(figures.background.edge).toBe(1);
  });

  it("follow a background that slopes", () => {
    const counts = [10, 20, 30, 140, 50, 60, 70];
    const figures = figuresOf(counts, { from: 0, to: 6 });
    expect(figures.net).toBe(100); // 380 - 7 * (10 + 70) / 2
    expect(figures.centroid).toBeCloseTo(3, 12);
    expect(figures.fwhm).toBe(1); // from 100 to 0 in one bin: half at 2.5 and 3.5
    expect(figures.background.at(3)).toBeCloseTo(40, 12);
  });

  it("have an error of net that counts the edges twice", () => {
    // Edges of one bin each: variance = 14 + 24 + 14 + 4 + 4 + (4 + 4) * (1 - 7 / 2)²
    const { netError } = figuresOf([4, 4, 14, 24, 14, 4, 4], { from: 0, to: 6 });
    expect(netError ** 2).toBeCloseTo(60 + 8 * 6.25, 10);
  });

  it("have an error of net as large as the spread of many noisy ones", () => {
    const next = random(11);
    const all = Array.from({ length: 1000 }, () =>
      figuresOf(noisyPeak([1000, 30, 4, 15, 0.1], 60, 30, next), { from: 5, to: 55 }),
    );
    const { mean, spread } = meanAndSpread(all.map(({ net }) => net));
    expect(Math.abs(mean - 1000)).toBeLessThan((4 * spread) / Math.sqrt(1000));
    expect(meanAndSpread(all.map(({ netError }) => netError)).mean / spread).toBeGreaterThan(0.9);
    expect(meanAndSpread(all.map(({ netError }) => netError)).mean / spread).toBeLessThan(1.1);
  });

  it("find the width and centre of a Gauss peak", () => {
    const counts = Array.from({ length: 200 }, (_, bin) => peakAt(bin, [1e6, 101.4, 10, 50, 2], 100));
    const figures = figuresOf(counts, { from: 30, to: 170 });
    expect(figures.net).toBeCloseTo(1e6, 0);
    expect(figures.centroid).toBeCloseTo(101.4, 2);
    expect(Math.abs(figures.fwhm! - 23.548)).toBeLessThan(0.2); // the top is a mean over five bins
  });

  it("find the width of a noisy peak, too, within a few percent in the mean", () => {
    const next = random(13);
    const all = Array.from({ length: 300 }, () => noisyPeak([3700, 100, 20, 0, 0], 200, 100, next));
    const widths = all.map((counts) => figuresOf(counts, { from: 0, to: 199 }).fwhm!);
    expect(Math.abs(meanAndSpread(widths).mean / 47.1 - 1)).toBeLessThan(0.04);
  });

  it("leave out what can't be told", () => {
    const empty = figuresOf(new Uint32Array(10), { from: 0, to: 9 });
    expect(empty).toMatchObject({ gross: 0, net: 0, netError: 0, centroid: null, fwhm: null });
    const dip = figuresOf([9, 9, 1, 9, 9], { from: 0, to: 4 });
    expect(dip.net).toBe(-8);
    expect(dip.centroid).toBeNull();
    expect(figuresOf([1, 2, 3, 4, 9, 30], { from: 0, to: 5 }).fwhm).toBeNull();
  });
});

describe("a range", () => {
  it("is in order, whole and within the bins", () => {
    expect(rangeWithin(20.4, 9.6, 100)).toEqual({ from: 10, to: 20 });
    expect(rangeWithin(-50, 4, 100)).toEqual({ from: 0, to: 4 });
    expect(rangeWithin(90, 1e9, 100)).toEqual({ from: 90, to: 99 });
  });

  it("is none of less than five bins or of no numbers", () => {
    expect(rangeWithin(10, 13, 100)).toBeNull();
    expect(rangeWithin(200, 300, 100)).toBeNull();
    expect(rangeWithin(NaN, 30, 100)).toBeNull();
  });
});
