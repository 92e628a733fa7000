import { describe, expect, it } from "vitest";
import { judge, medianOf } from "../../src/views/rates/judgement";

describe("the median", () => {
  it("is the middle one, or between the middle two", () => {
    expect(medianOf([3, 1, 2])).toBe(2);
    expect(medianOf([10, 1, 2, 100])).toBe(6);
    expect(medianOf([7])).toBe(7);
    expect(medianOf([])).toBeNaN();
  });
});

describe("a channel", () => {
  const alike = (countsIn: number[]): string[] => judge(countsIn, countsIn);

  it("is dead when it doesn't count while others do", () => {
    expect(alike([100, 0, 120, 90])).toEqual(["", "dead", "", ""]);
  });

  it("isn't dead when it may be chance", () => {
    expect(alike([9, 0, 9, 9])).toEqual(["", "", "", ""]);
    expect(alike([10, 0, 10, 10])).toEqual(["", "dead", "", ""]);
  });

  it("isn't dead when none counts", () => {
    expect(alike([0, 0, 0])).toEqual(["", "", ""]);
    expect(alike([])).toEqual([]);
  });

  it("is dead even when most are", () => {
    expect(alike([50, 0, 0, 0, 0])).toEqual(["", "dead", "dead", "dead", "dead"]);
  });

  it("is blocked when nothing comes out of what goes in", () => {
    expect(judge([100, 100, 9], [100, 0, 0])).toEqual(["", "blocked", ""]);
  });

  it("is noisy far above the median", () => {
    // Median 100 of all five, no spread: the limit is 500.
    expect(alike([100, 100, 100, 100, 501])).toEqual(["", "", "", "", "noisy"]);
    expect(alike([100, 100, 100, 100, 500])).toEqual(["", "", "", "", ""]);
  });

  it("is noisy only beyond the spread of the others", () => {
    // Median 100, distances 90, 50, 10, 0, 100, 200 and a far one: their median is 90, the limit 100 + 5 * 133.4.
    expect(alike([10, 50, 90, 100, 200, 300, 768])).toEqual(["", "", "", "", "", "", "noisy"]);
    expect(alike([10, 50, 90, 100, 200, 300, 767])).toEqual(["", "", "", "", "", "", ""]);
  });

  it("stands out though others are noisy, too", () => {
    expect(alike([10, 11, 12, 13, 14, 9, 10, 1000, 900])).toEqual(["", "", "", "", "", "", "", "noisy", "noisy"]);
  });

  it("is not noisy alone, nor by a few counts", () => {
    expect(alike([100_000])).toEqual([""]);
    expect(alike([1, 1, 1, 9])).toEqual(["", "", "", ""]);
  });

  it("of a strip detector, which counts nine times more in its middle, is in order", () => {
    const counts = [229, 249, 227, 217, 70, 78, 92, 404, 442, 552, 612, 585, 454, 368, 316, 232];
    expect(alike(counts).every((judgement) => judgement === "")).toBe(true);
  });
});
