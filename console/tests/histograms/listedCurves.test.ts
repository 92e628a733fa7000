import { expect, it } from "vitest";
import { listedCurves } from "../../src/views/histograms/listedCurves";

const keV = (gain: number) => ({ gain, offset: 0, unit: "keV" });
const calibrationOf = (curve: string) => keV(curve === "a@0" ? 2 : 3);
const live = [
  { key: "a@0", label: "a · ch 0", counts: [1] },
  { key: "a@1", label: "a · ch 1", counts: [2] },
];
const copies = [
  { key: "copy 4", label: "a then", counts: [3], calibration: keV(1), source: "a@0" },
  { key: "copy 7", label: "file", counts: [4], calibration: keV(5), source: null },
];

it("lists the live curves and then the copies, each on the axis that its channel has now", () => {
  const listed = listedCurves(live, copies, calibrationOf);
  expect(listed.map(({ key, source, isCopy, calibration }) => [key, source, isCopy, calibration.gain])).toEqual([
    ["a@0", "a@0", false, 2],
    ["a@1", "a@1", false, 3],
    ["copy 4", "a@0", true, 2],
    ["copy 7", null, true, 5],
  ]);
});
