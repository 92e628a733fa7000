import { describe, expect, it } from "vitest";
import { inBins } from "../../src/analysis/calibration";
import type { PeakFit } from "../../src/analysis/fit";
import { curveSetOf, onAxis, positionText, spanOf, spanText } from "../../src/views/histograms/display";

const keV = (gain: number, offset = 0) => ({ gain, offset, unit: "keV" });
const curve = (counts: number[], calibration = inBins, isCopy = false) => ({
  label: "x",
  counts,
  calibration,
  isCopy,
});

describe("the drawn curves", () => {
  it("are steps from edge to edge of the bins", () => {
    const set = curveSetOf([curve([1, 2, 3, 4], keV(2, 1))], keV(2, 1), 2, null);
    expect(set.steps).toBe(true);
    expect([...set.x]).toEqual([0, 4]);
    expect(Array.from(set.curves[0]!.values)).toEqual([3, 7]);
  });

  it("are as long as the longest", () => {
    const set = curveSetOf([curve([1, 2]), curve([5, 6, 7])], inBins, 1, null);
    expect(set.curves.map(({ values }) => Array.from(values))).toEqual([[1, 2, 0], [5, 6, 7]]);
    expect(curveSetOf([curve([1]), curve([5, 6, 7])], inBins, 2, null).curves[0]!.values).toHaveLength(2);
    expect(curveSetOf([], inBins, 4, null)).toMatchObject({ curves: [] });
  });

  it("stand at their own positions when another calibration of the same unit is the axis", () => {
    expect(Array.from(onAxis(curve([8, 4], keV(2, 1)), keV(1, 0.5), 4))).toEqual([4, 4, 2, 2]);
  });

  it("stand bin by bin when the units differ", () => {
    const counts = [8, 4];
    expect(onAxis(curve(counts, keV(2, 1)), inBins, 4)).toBe(counts);
    expect(onAxis(curve(counts), keV(2, 1), 4)).toBe(counts);
    expect(onAxis(curve(counts, keV(2, 1)), keV(2, 1), 4)).toBe(counts);
  });

  it("are dashed when they are copies", () => {
    const set = curveSetOf([curve([1]), curve([2], inBins, true)], inBins, 1, null);
    expect(set.curves.map(({ dashed }) => dashed ?? false)).toEqual([false, true]);
  });

  it("have a fit over them in its range alone, summed as they are and never below zero", () => {
    const fit = { range: { from: 1, to: 6 }, at: (bin: number) => bin - 3 } as PeakFit;
    const whole = curveSetOf([curve(new Array<number>(8).fill(0))], inBins, 1, fit).curves[1]!;
    expect(Array.from(whole.values)).toEqual([NaN, 0, 0, 0, 1, 2, 3, NaN]);
    expect(whole).toMatchObject({ dashed: true, gaps: true });
    const halves = curveSetOf([curve(new Array<number>(8).fill(0))], inBins, 2, fit).curves[1]!;
    expect(Array.from(halves.values)).toEqual([NaN, 0, 3, NaN]);
  });
});

describe("what is looked at", () => {
  it("is kept in bins", () => {
    expect(spanText([100, 201], keV(2, 0))).toBe("50to100.5");
    expect(spanOf("50to100.5", keV(4, 1))).toEqual([201, 403]);
    expect(spanText(null, inBins)).toBeNull();
  });

  it("is all where the address says nothing sensible", () => {
    for (const text of [null, "", "5", "7to3", "atob", "1toInfinity"]) {
      expect(spanOf(text, inBins)).toBeNull();
    }
  });
});

describe("a position's text", () => {
  it("has the digits that a bin asks for, and the unit", () => {
    expect(positionText(661.657, keV(1))).toBe("661.7 keV");
    expect(positionText(661.657, keV(0.25))).toBe("661.66 keV");
    expect(positionText(2e9, { gain: 1e9, offset: 0, unit: "ns" })).toBe("2000000000 ns");
    expect(positionText(12, inBins)).toBe("bin 12");
  });
});
