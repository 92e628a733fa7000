import { describe, expect, it } from "vitest";
import { BadTable, parseTable, tableText } from "../../src/analysis/csv";

const table = {
  calibration: { gain: 0.5, offset: 1, unit: "keV" },
  columns: [{ label: "spectrum0 · ch 7", counts: [3, 0, 4294967295] }, { label: 'a "b", c', counts: [1, 2] }],
};
const text = 'bin,position (keV),spectrum0 · ch 7,"a ""b"", c"\n0,1,3,1\n1,1.5,0,2\n2,2,4294967295,\n';

describe("a file of histograms", () => {
  it("has a line for each bin", () => {
    expect(tableText(table)).toBe(text);
  });

  it("is read as it was written", () => {
    const read = parseTable(text.replace(/\n/g, "\r\n"));
    expect(read.calibration).toEqual({ gain: 0.5, offset: 1, unit: "keV" });
    expect(read.columns.map(({ label }) => label)).toEqual(["spectrum0 · ch 7", 'a "b", c']);
    expect([...(read.columns[0]!.counts as Float64Array)]).toEqual([3, 0, 4294967295]);
    expect([...(read.columns[1]!.counts as Float64Array)]).toEqual([1, 2, 0]);
  });

  it("is refused with the line that is wrong", () => {
    expect(() => parseTable("")).toThrow(BadTable);
    expect(() => parseTable("time,volts\n1,2\n")).toThrow("first line");
    expect(() => parseTable("bin,position (keV),a\n")).toThrow("0 bins");
    expect(() => parseTable("bin,position (keV),a\n0,0,1\n1,1,x\n")).toThrow("Line 3");
    expect(() => parseTable("bin,position (keV),a\n0,0,1\n2,2,1\n")).toThrow("Line 3");
    expect(() => parseTable("bin,position (keV),a\n0,0,1,5\n")).toThrow("Line 2");
  });
});
