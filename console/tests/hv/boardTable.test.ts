import { describe, expect, it } from "vitest";
import { tableOf } from "../../src/views/hv/boardTable";

describe("a board's table", () => {
  it("has a column per list, and single values apart", () => {
    const table = tableOf(
      [
        { name: "HVSet", isArray: true, values: ["800", "700"] },
        { name: "HVState", isArray: true, values: ["on"] },
        { name: "Temperature", isArray: false, values: ["36.6"] },
      ],
      new Set(["HVState", "Temperature"]),
    );
    expect(table).toEqual({
      columns: [
        { name: "HVSet", isReadOnly: false, values: ["800", "700"] },
        { name: "HVState", isReadOnly: true, values: ["on"] },
      ],
      channels: 2,
      boardWide: [{ name: "Temperature", isReadOnly: true, value: "36.6" }],
      hidden: 0,
    });
  });

  it("is empty of no values", () => {
    expect(tableOf([], new Set())).toEqual({ columns: [], channels: 0, boardWide: [], hidden: 0 });
  });

  it("keeps to what a page can show, and tells how much is hidden", () => {
    const values = Array<string>(15_000).fill("1");
    const table = tableOf([{ name: "a", isArray: true, values }, { name: "b", isArray: true, values }], new Set());
    expect(table.channels).toBe(10_000);
    expect(table.hidden).toBe(10_000);
  });

  it("hides single values beyond those, too", () => {
    const values = Array.from({ length: 20_003 }, (_, i) => ({ name: `P${i}`, isArray: false, values: ["1"] }));
    const table = tableOf(values, new Set());
    expect(table.boardWide).toHaveLength(20_000);
    expect(table.hidden).toBe(3);
  });
});
