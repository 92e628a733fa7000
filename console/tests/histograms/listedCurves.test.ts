import { describe, expect, it } from "vitest";
import { listedCurves, withAnalysed } from "../../src/views/histograms/listedCurves";

const keV = (gain: number) => ({ gain, offset: 0, unit: "keV" });
const calibrationOf = (path: string) => keV(path === "a" ? 2 : 3);
const live = [
  { key: "a@0", label: "a · ch 0", path: "a", counts: [1] },
  { key: "b@0", label: "b · ch 0", path: "b", counts: [2] },
];
const copies = [
  { label: "a then", counts: [3], calibration: keV(1), path: "a" },
  { label: "file", counts: [4], calibration: keV(5), path: null },
];
const listed = listedCurves(live, copies, calibrationOf);

describe("the listed curves", () => {
  it("are the live ones on their blocks' axes, and then the copies", () => {
    expect(listed.map(({ key, isCopy, calibration }) => [key, isCopy, calibration.gain])).toEqual([
      ["a@0", false, 2],
      ["b@0", false, 3],
      ["copy 0", true, 1],
      ["copy 1", true, 5],
    ]);
  });

  it("have the chosen one analysed, or else the first", () => {
    expect(withAnalysed(listed, "copy 1", calibrationOf).analysed!.label).toBe("file");
    expect(withAnalysed(listed, "gone", calibrationOf).analysed!.key).toBe("a@0");
    expect(withAnalysed([], null, calibrationOf)).toEqual({ curves: [], analysed: undefined });
  });

  it("have copies of the analysed block on its axis of now, others on their own", () => {
    const gains = (key: string) =>
      withAnalysed(listed, key, calibrationOf).curves.map((curve) => curve.calibration.gain);
    expect(gains("a@0")).toEqual([2, 3, 2, 5]);
    expect(gains("b@0")).toEqual([2, 3, 1, 5]);
    expect(gains("copy 0")).toEqual([2, 3, 2, 5]);
  });
});
