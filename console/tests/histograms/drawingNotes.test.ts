import { expect, it } from "vitest";
import { inBins } from "../../src/analysis/calibration";
import { drawingNotes } from "../../src/views/histograms/drawingNotes";

const keV = (gain: number) => ({ gain, offset: 0, unit: "keV" });
const curve = (label: string, calibration = inBins) => ({ label, counts: [1, 2], calibration, isCopy: false });

it("says nothing of curves that have the axis", () => {
  expect(drawingNotes([curve("a", keV(2)), curve("b", keV(2))], keV(2))).toEqual([]);
});

it("says once which curves are drawn bin by bin, and which are spread", () => {
  const curves = [curve("a", keV(2)), curve("b"), curve("c"), curve("d", keV(3))];
  expect(drawingNotes(curves, keV(2))).toEqual([
    "Drawn bin by bin, for a calibration of another unit or none: b, c.",
    "Counts spread over these bins, for another calibration: d.",
  ]);
});
