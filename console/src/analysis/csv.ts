import { type Calibration, calibrationOf, inBins, positionOf } from "./calibration";

/** Histograms on one axis, as they stand in a file: a column of bins, one of positions, one for each curve. */
export interface Table {
  calibration: Calibration;
  columns: Column[];
}

export interface Column {
  label: string;
  counts: ArrayLike<number>;
}

export function tableText({ calibration, columns }: Table): string {
  const bins = Math.max(0, ...columns.map(({ counts }) => counts.length));
  const names = ["bin", `position (${calibration.unit})`, ...columns.map(({ label }) => label)];
  const lines = [names.map(quoted).join(",")];
  for (let bin = 0; bin < bins; ++bin) {
    const position = Number(positionOf(bin, calibration).toPrecision(12));
    lines.push([bin, position, ...columns.map(({ counts }) => counts[bin] ?? "")].join(","));
  }
  return `${lines.join("\n")}\n`;
}

/** A file that isn't one of tableText. `message` is for the operator. */
export class BadTable extends Error {}

const mostBins = 1 << 20;
const mostColumns = 64;

/** Fails with BadTable. */
export function parseTable(text: string): Table {
  const [head = "", ...rows] = text.replace(/^\ufeff/, "").split(/\r?\n/);
  const names = cellsOf(head);
  const unit = /^position \((.*)\)$/.exec(names[1] ?? "")?.[1];
  if (names[0] !== "bin" || unit === undefined || names.length < 3) {
    throw new BadTable('This is no file of histograms: its first line should begin with "bin,position (keV)".');
  }
  const lines = rows.filter((row) => row !== "");
  if (lines.length === 0 || lines.length > mostBins || names.length > mostColumns + 2) {
    const found = `This file holds ${lines.length} bins of ${names.length - 2} curves`;
    throw new BadTable(`${found}: from 1 to ${mostBins} bins of at most ${mostColumns} can be shown.`);
  }
  const columns = names.slice(2).map((label) => ({ label, counts: new Float64Array(lines.length) }));
  const positions = lines.map((line, bin) => readRow(line, bin, columns));
  return { calibration: calibrationFrom(positions, unit), columns };
}

/** Puts the counts into the columns; answers the position. */
function readRow(line: string, bin: number, columns: { counts: Float64Array }[]): number {
  const cells = line.split(",");
  const values = cells.map(Number);
  const isWhole = cells.length === columns.length + 2 && values.every((value) => Number.isFinite(value));
  if (!isWhole || values[0] !== bin) {
    throw new BadTable(`Line ${bin + 2} should be bin ${bin}, a position and ${columns.length} counts.`);
  }
  columns.forEach(({ counts }, i) => (counts[bin] = values[i + 2]!));
  return values[1]!;
}

function calibrationFrom(positions: number[], unit: string): Calibration {
  const last = positions.length - 1;
  const points = [{ bin: 0, position: positions[0]! }, { bin: last, position: positions[last]! }];
  return (last > 0 ? calibrationOf(points, unit) : null) ?? inBins;
}

function quoted(cell: string): string {
  return /[",\n\r]/.test(cell) ? `"${cell.replace(/"/g, '""').replace(/[\n\r]+/g, " ")}"` : cell;
}

function cellsOf(line: string): string[] {
  return [...line.matchAll(/(?:^|,)(?:"((?:[^"]|"")*)"|([^,]*))/g)].map(
    ([, inQuotes, plain]) => inQuotes?.replace(/""/g, '"') ?? plain ?? "",
  );
}
