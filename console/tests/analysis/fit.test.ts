import { describe, expect, it, vi } from "vitest";
import { fitPeak, NoFit, type PeakFit } from "../../src/analysis/fit";
import { peakAt, peakGradientAt, type PeakParameters } from "../../src/analysis/gauss";
import { meanAndSpread, noisyPeak, random } from "./random";

vi.setConfig({ testTimeout: 120_000 });

const whole = { from: 0, to: 99 };
const middle = 49.5;
const truth: PeakParameters = [2000, 47.3, 6.5, 20, -0.1];

async function manyFits(parameters: PeakParameters, count: number): Promise<PeakFit[]> {
  const next = random(7);
  const fits: PeakFit[] = [];
  for (let i = 0; i < count; ++i) {
    fits.push(await fitPeak(noisyPeak(parameters, 100, middle, next), whole));
  }
  return fits;
}

describe("the fit of a Gauss peak on a line", () => {
  it("finds the parameters of counts without noise", async () => {
    const counts = Array.from({ length: 100 }, (_, bin) => peakAt(bin, truth, middle));
    const fit = await fitPeak(counts, whole);
    expect(fit.area).toBeCloseTo(2000, 1);
    expect(fit.mean).toBeCloseTo(47.3, 4);
    expect(fit.sigma).toBeCloseTo(6.5, 4);
    expect(fit.level).toBeCloseTo(20, 3);
    expect(fit.slope).toBeCloseTo(-0.1, 4);
    expect(fit.chiSquare).toBeLessThan(1e-5);
    expect(fit.degrees).toBe(95);
    expect(fit.at(47)).toBeCloseTo(peakAt(47, truth, middle), 2);
  });

  it("finds a minimum however long it was counted", async () => {
    const next = random(11);
    for (const area of [20_000, 60_000, 100_000, 150_000]) {
      for (let i = 0; i < 60; ++i) {
        const fit = await fitPeak(noisyPeak([area, 74.5, 20.2, 0, 0], 151, 75, next), { from: 0, to: 150 });
        expect(Math.abs(fit.sigma - 20.2)).toBeLessThan(5 * fit.sigmaError);
      }
    }
  });

  it("finds them wherever the range lies and however large the counts are", async () => {
    const far: PeakParameters = [3e8, 15_047.3, 6.5, 1e5, 300];
    const counts = Array.from({ length: 15_100 }, (_, bin) => peakAt(bin, far, 15_049.5));
    const fit = await fitPeak(counts, { from: 15_000, to: 15_099 });
    expect(fit.area / 3e8).toBeCloseTo(1, 6);
    expect(fit.mean).toBeCloseTo(15_047.3, 5);
    expect(fit.sigma).toBeCloseTo(6.5, 5);
  });

  it("is right in the mean of many noisy peaks, and errs as much as it says", async () => {
    const fits = await manyFits(truth, 400);
    const check = (value: (fit: PeakFit) => number, error: (fit: PeakFit) => number, expected: number): void => {
      const { mean, spread } = meanAndSpread(fits.map(value));
      const said = meanAndSpread(fits.map(error)).mean;
      expect(Math.abs(mean - expected)).toBeLessThan((4 * spread) / Math.sqrt(fits.length));
      expect(said / spread).toBeGreaterThan(0.88); // four standard errors of a spread of 400 are 14 %
      expect(said / spread).toBeLessThan(1.14);
    };
    check((fit) => fit.area, (fit) => fit.areaError, 2000);
    check((fit) => fit.mean, (fit) => fit.meanError, 47.3);
    check((fit) => fit.sigma, (fit) => fit.sigmaError, 6.5);
  });

  it("has a chi² of about its degrees of freedom in the mean", async () => {
    const fits = await manyFits(truth, 200);
    const { mean } = meanAndSpread(fits.map((fit) => fit.chiSquare / fit.degrees));
    expect(mean).toBeGreaterThan(0.95);
    expect(mean).toBeLessThan(1.05);
  });

  it("knows the error of a peak without background: sigma over the root of the counts", async () => {
    const counts = Array.from({ length: 100 }, (_, bin) => peakAt(bin, [1e6, 50, 5, 0, 0], middle));
    const fit = await fitPeak(counts, { from: 30, to: 70 });
    expect(fit.meanError / (5 / 1000)).toBeCloseTo(1, 1);
  });

  it("refuses what holds no peak", async () => {
    const flat = new Array<number>(100).fill(50);
    await expect(fitPeak(flat, whole)).rejects.toThrow(NoFit);
    await expect(fitPeak(new Array<number>(100).fill(0), whole)).rejects.toThrow(NoFit);
    const slope = flat.map((_, bin) => 1000 - 5 * bin);
    await expect(fitPeak(slope, whole)).rejects.toThrow(NoFit);
    const dip = flat.map((_, bin) => 1000 - peakAt(bin, [5000, 50, 6, 0, 0], middle));
    await expect(fitPeak(dip, whole)).rejects.toThrow(NoFit);
  });

  it("refuses a range of too few or too many bins", async () => {
    await expect(fitPeak(new Array<number>(100).fill(1), { from: 0, to: 4 })).rejects.toThrow("wider region");
    await expect(fitPeak(new Uint32Array(5000), { from: 0, to: 4999 })).rejects.toThrow("mark the peak alone");
  });
});

describe("the gradient of the peak", () => {
  it("is that of small differences", () => {
    const gradient = peakGradientAt(52, truth, middle);
    truth.forEach((value, i) => {
      const step = 1e-5 * Math.max(1, Math.abs(value));
      const moved = (sign: number): PeakParameters =>
        truth.map((v, k) => (k === i ? v + sign * step : v)) as unknown as PeakParameters;
      const difference = (peakAt(52, moved(1), middle) - peakAt(52, moved(-1), middle)) / (2 * step);
      expect(gradient[i]).toBeCloseTo(difference, 5);
    });
  });
});
