import { describe, expect, it, vi } from "vitest";
import { fitPeak } from "../../src/analysis/fit";
import type { PeakParameters } from "../../src/analysis/gauss";
import { inverseOf } from "../../src/analysis/matrix";
import { calibrated, withError } from "../../src/analysis/resolution";
import { meanAndSpread, noisyPeak, random } from "./random";

vi.setConfig({ testTimeout: 120_000 });

const keV = { gain: 6, offset: 300, unit: "keV" };

describe("the resolution", () => {
  it("is the full width at half maximum by the position, with the error that many fits show", async () => {
    const truth: PeakParameters = [2000, 60, 6, 5, 0];
    const next = random(3);
    const found = [];
    for (let i = 0; i < 300; ++i) {
      found.push(calibrated(await fitPeak(noisyPeak(truth, 120, 60, next), { from: 20, to: 100 }), keV));
    }
    const { mean, spread } = meanAndSpread(found.map(({ resolution }) => resolution!.value));
    expect(Math.abs(mean - (100 * 2.354820045 * 6 * 6) / 660)).toBeLessThan((4 * spread) / Math.sqrt(300));
    const said = meanAndSpread(found.map(({ resolution }) => resolution!.error)).mean;
    expect(said / spread).toBeGreaterThan(0.86);
    expect(said / spread).toBeLessThan(1.16);
    expect(meanAndSpread(found.map((peak) => peak.mean.value)).mean).toBeCloseTo(660, 0);
  });

  it("is none of a peak that isn't above zero", async () => {
    const fit = await fitPeak(noisyPeak([2000, 60, 6, 5, 0], 120, 60, random(3)), { from: 20, to: 100 });
    expect(calibrated(fit, { gain: 1, offset: -100, unit: "ns" }).resolution).toBeNull();
  });
});

describe("a value and its error", () => {
  it("have the digits that the error leaves", () => {
    expect(withError({ value: 661.6573, error: 0.1234 })).toBe("661.66 ± 0.12");
    expect(withError({ value: 661.6573, error: 23 })).toBe("662 ± 23");
    expect(withError({ value: 5, error: 0 })).toBe("5.00 ± 0.00");
    expect(withError({ value: NaN, error: 1 })).toBe("–");
  });
});

describe("the inverse of a matrix", () => {
  it("is that of elements of very different size", () => {
    const inverse = inverseOf([[4e12, 2], [2, 2e-12]])!;
    expect(inverse[0]![0]! * 1e12).toBeCloseTo(0.5, 10);
    expect(inverse[0]![1]).toBeCloseTo(-0.5, 10);
    expect(inverse[1]![1]! * 1e-12).toBeCloseTo(1, 10);
  });

  it("is none of a matrix that has none", () => {
    expect(inverseOf([[1, 1], [1, 1]])).toBeNull();
    expect(inverseOf([[0]])).toBeNull();
    expect(inverseOf([[NaN]])).toBeNull();
  });
});
