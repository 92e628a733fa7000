import { describe, expect, it } from "vitest";
import { extentsOf, isDense } from "../../src/charts/dense";

const x = [0, 1, 2, 3, 4, 5, 6, 7];

describe("curves with many values to a pixel", () => {
  it("are dense from one and a half values a pixel on", () => {
    expect([isDense(150, 100), isDense(149, 100)]).toEqual([true, false]);
  });

  it("show the least and greatest value of each column, and touch the one before", () => {
    expect(extentsOf(x, [1, 9, 2, 3, 50, 4, 0, 7], [0, 7], [0, 8], 2)).toEqual([[1, 9], [0, 50]]);
    expect(extentsOf(x, [5, 5, 5, 5, 9, 9, 9, 9], [0, 7], [0, 8], 2)).toEqual([[5, 5], [5, 9]]);
  });

  it("keep a single count in a sea of zeros", () => {
    const values = new Float64Array(16384);
    values[9000] = 1;
    const positions = Float64Array.from(values, (_, i) => i);
    const extents = extentsOf(positions, values, [0, 16383], [0, 16384], 1000);
    expect(extents.filter((extent) => extent?.[1] === 1)).toHaveLength(1);
    expect(extents[549]).toEqual([0, 1]); // 9000 × 1000 / 16384
  });

  it("have gaps where values are missing", () => {
    expect(extentsOf(x, [1, 2, null, null, null, undefined, 3, 4], [0, 7], [0, 8], 4)).toEqual(
      [[1, 2], null, null, [3, 4]],
    );
  });

  it("leave out what is beside the part that is shown", () => {
    expect(extentsOf(x, [100, 1, 2, 3, 4, 100, 100, 100], [0, 5], [1, 5], 2)).toEqual([[1, 100], [2, 4]]);
    expect(extentsOf([], [], [0, -1], [0, 1], 2)).toEqual([null, null]);
  });
});
