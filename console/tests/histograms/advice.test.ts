import { describe, expect, it } from "vitest";
import { inBins } from "../../src/analysis/calibration";
import { adviceOf, type Progress } from "../../src/views/histograms/advice";
import { calibrationText } from "../../src/views/histograms/CalibrationPanel";
import { copiesOf, type Copy, copyOf, withCopies } from "../../src/views/histograms/copies";
import { spectra, times } from "../../src/views/histograms/kinds";
import { numberOf } from "../../src/views/histograms/useNumber";
import { block } from "./blocks";

const start: Progress = { isCounted: false, regions: 0, hasFit: false, isCalibrated: false, knownLines: 0 };

describe("the advice", () => {
  it("leads from an empty page to two known lines", () => {
    expect(adviceOf(spectra, start)).toContain("press Start");
    const counted = { ...start, isCounted: true };
    expect(adviceOf(spectra, counted)).toContain("Mark the clearest peak");
    expect(adviceOf(spectra, { ...counted, regions: 1, hasFit: true })).toContain("661.7 keV");
    expect(adviceOf(times, { ...counted, regions: 1, hasFit: true })).toContain("unit of timestamps");
    const calibrated = { isCounted: true, regions: 1, hasFit: true, isCalibrated: true };
    expect(adviceOf(spectra, { ...calibrated, knownLines: 1 })).toContain("second one settles");
    expect(adviceOf(spectra, { ...calibrated, knownLines: 2 })).toBe("");
  });
});

describe("the axis before it is calibrated", () => {
  it("is in bins, of times in the units of their bins where the server tells them", () => {
    expect(spectra.ownCalibration(block("a", 1, 1), 2)).toEqual(inBins);
    const ofBoard = { gain: 250, offset: 0, unit: "timestamp units" };
    expect(times.ownCalibration(block("a", 1, 1, { binning: 250 }), null)).toEqual(ofBoard);
    expect(times.ownCalibration(block("a", 1, 1, { binning: 0 }), null)).toEqual(inBins);
    expect(times.ownCalibration(block("a", 1, 1), 2)).toEqual(inBins);
    expect(times.ownCalibration(undefined, 2)).toEqual(inBins);
  });

  it("is in ns as soon as the unit of timestamps is told", () => {
    const binned = block("a", 1, 1, { binning: 250 });
    expect(times.ownCalibration(binned, 0.004)).toEqual({ gain: 1, offset: 0, unit: "ns" });
    expect(times.hasTimestampUnit(binned)).toBe(true);
    expect(times.hasTimestampUnit(block("a", 1, 1))).toBe(false);
    expect(spectra.hasTimestampUnit(binned)).toBe(false);
  });

  it("is told in a few words", () => {
    expect(calibrationText(inBins)).toBe("none");
    expect(calibrationText({ gain: 0.25, offset: -3, unit: "keV" })).toBe("0.25 keV × bin − 3");
    expect(calibrationText({ gain: 1, offset: 0, unit: "s" })).toBe("1 s × bin");
  });
});

describe("copies", () => {
  const made = (): Copy => copyOf({ label: "x", counts: [1], calibration: inBins, source: null });

  it("are known apart, whatever is removed between", () => {
    expect(new Set([made(), made(), made()].map(({ key }) => key)).size).toBe(3);
  });

  it("are at most eight", () => {
    const copy = made();
    expect(withCopies([copy], [copy])).toHaveLength(2);
    expect(() => withCopies(new Array(8).fill(copy), [copy])).toThrow("remove some first");
  });

  it("are apart for spectra and times", () => {
    expect(copiesOf("spectrum")).toBe(copiesOf("spectrum"));
    expect(copiesOf("spectrum")).not.toBe(copiesOf("tof_histogram"));
  });
});

describe("an entered number", () => {
  it("may have a comma, a sign and blanks, and is none when empty", () => {
    expect(numberOf(" 661,7 ")).toBe(661.7);
    expect(numberOf("−3.5")).toBe(-3.5);
    expect(numberOf("1e-9")).toBe(1e-9);
    expect(numberOf("")).toBeNaN();
    expect(numberOf("abc")).toBeNaN();
  });
});
