import { parseTable, tableText } from "../../analysis/csv";
import { isDark } from "../../base/theme";
import { download, fileName } from "../common/download";
import { type Copy, copyOf } from "./copies";
import { binsOf, fitColour, onAxis, type ShownCurve } from "./display";
import type { FileProps } from "./FilePanel";
import { type LegendEntry, pictureOf } from "./picture";

const largestFile = 64 * 1024 * 1024;

/** Fails with a message for the operator. */
export async function copiesFromFile(file: File): Promise<Copy[]> {
  if (file.size > largestFile) {
    throw new Error(`${file.name} is too large for a file of histograms.`);
  }
  const { calibration, columns } = parseTable(await file.text());
  return columns.map(({ label, counts }) =>
    copyOf({ label: `${label} (file)`, counts, calibration, source: null }),
  );
}

/** The curves as columns, on the axis that is shown. */
export function saveTable({ title, curves, axis }: FileProps): void {
  const columns = curves.map((curve) => ({ label: curve.label, counts: onAxis(curve, axis, binsOf(curves)) }));
  download(fileName(title, "csv"), new Blob([tableText({ calibration: axis, columns })], { type: "text/csv" }));
}

/** Fails when no chart is shown. */
export async function savePicture({ title, curves, fitText, place }: FileProps): Promise<void> {
  const chart = place()?.querySelector("canvas");
  if (!chart) {
    throw new Error("No curve is shown that could be saved.");
  }
  const head = `${title}, ${new Date().toLocaleString()}`;
  download(fileName(title, "png"), await pictureOf(chart, head, legendOf(curves, fitText), isDark.value));
}

function legendOf(curves: readonly ShownCurve[], fitText: string | null): LegendEntry[] {
  const entries: LegendEntry[] = curves.map(({ label, isCopy }, colour) => ({ label, colour, isDashed: isCopy }));
  return fitText === null ? entries : [...entries, { label: fitText, colour: fitColour, isDashed: true }];
}
