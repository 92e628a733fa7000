import { describe, expect, it } from "vitest";
import {
  centreAt, curveColour, type CurveSet, extent, indexAt, limited, tickTexts, valueRange, zoomed,
} from "../../src/charts/curves";

const set = (x: number[], ...curves: number[][]): CurveSet => ({
  x: Float64Array.from(x),
  curves: curves.map((values, colour) => ({ label: "", colour, values })),
  steps: true,
});

describe("A span", () => {
  it("stays within what there is", () => {
    expect(limited([20, 30], 0, 100, 1)).toEqual([20, 30]);
    expect(limited([-5, 15], 0, 100, 1)).toEqual([0, 20]);
    expect(limited([90, 110], 0, 100, 1)).toEqual([80, 100]);
  });
  it("is all when it is as wide, and never narrower than can be looked at", () => {
    expect(limited([-1, 101], 0, 100, 1)).toBeNull();
    expect(limited(null, 0, 100, 1)).toBeNull();
    expect(limited([50, 50.1], 0, 100, 4)).toEqual([50, 54]);
    expect(limited([0, 1], 5, 5, 1)).toBeNull();
  });
  it("is zoomed about a position that stays where it is", () => {
    expect(zoomed([0, 100], 25, 0.5)).toEqual([12.5, 62.5]);
    expect(zoomed([12.5, 62.5], 25, 2)).toEqual([0, 100]);
  });
});

describe("The position under the cursor", () => {
  it("is the last that isn't beyond it", () => {
    const x = Float64Array.of(0, 1, 2, 5);
    expect([-1, 0, 0.9, 1, 4.9, 5, 99].map((at) => indexAt(x, at))).toEqual([-1, 0, 0, 1, 2, 3, 3]);
    expect(indexAt(new Float64Array(0), 1)).toBe(-1);
  });
});

describe("The position of a value", () => {
  it("is the middle of its step, or its point", () => {
    expect([0, 1, 2].map((i) => centreAt(set([0, 2, 6]), i))).toEqual([1, 4, 8]);
    expect([0, 1, 2].map((i) => centreAt({ ...set([0, 2, 6]), steps: false }, i))).toEqual([0, 2, 6]);
    expect(centreAt(set([5]), 0)).toBe(5);
  });
});

describe("The vertical axis", () => {
  it("spans what is seen, over all curves", () => {
    expect(extent(set([0, 1, 2, 3], [1, 9, 2, 3], [0, 4, 5, 6]), null)).toEqual([0, 9]);
    expect(extent(set([0, 1, 2, 3], [1, 9, 2, 3], [0, 4, 5, 6]), [2, 3])).toEqual([2, 6]);
    expect(extent(set([]), null)).toBeNull();
  });
  it("begins at zero and leaves room above", () => {
    expect(valueRange([0, 100], false)).toEqual([0, 105]);
    expect(valueRange([-100, 100], false)).toEqual([-110, 110]);
    expect(valueRange([0, 0], false)).toEqual([0, 1]);
    expect(valueRange(null, false)).toEqual([0, 1.05]);
  });
  it("shows a count of one well above a logarithmic foot", () => {
    const [foot, top] = valueRange([0, 1000], true);
    expect(foot).toBe(0.5);
    expect(top).toBe(1600);
    expect(valueRange(null, true)).toEqual([0.5, 10]);
  });
});

describe("The ticks of an axis", () => {
  it("are short where they would run into each other", () => {
    expect(tickTexts([0, 200, 2000, 99_999])).toEqual(["0", "200", "2000", "99999"]);
    expect(tickTexts([0, 0.1 + 0.2, -1.5])).toEqual(["0", "0.3", "-1.5"]);
    expect(tickTexts([0, 5e10, 1e11])).toEqual(["0", "50.0 G", "100 G"]);
  });
});

describe("The colours of curves", () => {
  it("differ for eight curves, and begin again", () => {
    for (const isDark of [false, true]) {
      const colours = [...Array(8).keys()].map((i) => curveColour(i, isDark));
      expect(new Set(colours).size).toBe(8);
      expect(curveColour(8, isDark)).toBe(colours[0]);
    }
  });
});
