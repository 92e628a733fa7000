import { describe, expect, it } from "vitest";
import { binOf, calibrationOf, isCalibration, positionOf } from "../../src/analysis/calibration";
import { edgesOf, rebinned, resampled } from "../../src/analysis/rebin";

const keV = (gain: number, offset = 0) => ({ gain, offset, unit: "keV" });

describe("a calibration", () => {
  it("goes through two points", () => {
    const found = calibrationOf([{ bin: 100, position: 511 }, { bin: 250, position: 1274.5 }], "keV")!;
    expect(found.gain).toBeCloseTo(5.09, 12);
    expect(found.offset).toBeCloseTo(2, 10);
    expect(found.unit).toBe("keV");
    expect(positionOf(100, found)).toBeCloseTo(511, 10);
    expect(binOf(1274.5, found)).toBeCloseTo(250, 10);
  });

  it("goes through zero and one point", () => {
    expect(calibrationOf([{ bin: 331, position: 662 }], "keV")).toEqual(keV(2));
  });

  it("goes as near as it can by three", () => {
    const points = [{ bin: 0, position: 0 }, { bin: 1, position: 2 }, { bin: 2, position: 1 }];
    expect(calibrationOf(points, "keV")).toEqual(keV(0.5, 0.5));
  });

  it("is none where none rises through the points", () => {
    expect(calibrationOf([], "keV")).toBeNull();
    expect(calibrationOf([{ bin: 0, position: 5 }], "keV")).toBeNull();
    expect(calibrationOf([{ bin: 3, position: 5 }, { bin: 3, position: 9 }], "keV")).toBeNull();
    expect(calibrationOf([{ bin: 3, position: 9 }, { bin: 4, position: 5 }], "keV")).toBeNull();
    expect(calibrationOf([{ bin: NaN, position: 9 }], "keV")).toBeNull();
  });

  it("is told from other things", () => {
    expect(isCalibration(keV(1, -3))).toBe(true);
    const numbers = [keV(0), keV(-1), keV(NaN), keV(Infinity), keV(1, NaN)];
    for (const other of [null, 3, "x", {}, { gain: 1, offset: 0 }, ...numbers]) {
      expect(isCalibration(other)).toBe(false);
    }
  });
});

describe("rebinning", () => {
  it("sums and loses nothing", () => {
    expect([...rebinned([1, 2, 3, 4, 5], 2)]).toEqual([3, 7, 5]);
    expect([...rebinned([1, 2, 3], 1)]).toEqual([1, 2, 3]);
    expect([...rebinned([1, 2, 3], 64)]).toEqual([6]);
    expect([...rebinned([], 4)]).toEqual([]);
    expect([...rebinned(new Uint32Array([4294967295, 4294967295]), 2)]).toEqual([8589934590]);
  });

  it("has edges half a bin below the first of each", () => {
    expect([...edgesOf(5, 2, keV(10, 5))]).toEqual([0, 20, 40]);
  });
});

describe("counts on another axis", () => {
  it("stay where the axes agree", () => {
    expect([...resampled([1, 2, 3], keV(2, 1), keV(2, 1), 4)]).toEqual([1, 2, 3, 0]);
  });

  it("join in bins twice as wide", () => {
    // Bins of 1 keV from 0 to 4, and of 2 keV from 0 to 4.
    expect([...resampled([1, 2, 3, 4], keV(1, 0.5), keV(2, 1), 3)]).toEqual([3, 7, 0]);
  });

  it("part between bins of half the width and of another start", () => {
    expect([...resampled([8, 4], keV(2, 1), keV(1, 0.5), 4)]).toEqual([4, 4, 2, 2]);
    expect([...resampled([8, 4], keV(1), keV(1, 0.5), 3)]).toEqual([6, 2, 0]);
  });

  it("are none of none", () => {
    expect([...resampled([], keV(1), keV(2), 2)]).toEqual([0, 0]);
  });
});
