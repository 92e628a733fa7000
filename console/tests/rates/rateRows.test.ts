import { describe, expect, it } from "vitest";
import { barLength, rowsOf, sorted } from "../../src/views/rates/rateRows";

const counted = (seconds: number, ...counts: number[]): Parameters<typeof rowsOf>[0] => ({
  seconds,
  in: Float64Array.from(counts),
  out: Float64Array.from(counts, (count) => count / 2),
});

describe("rows of rates", () => {
  it("are counts by seconds, with the names of the configuration", () => {
    const rows = rowsOf(counted(4, 100, 200, 4000), ["Strip0a"]);
    expect(rows.map(({ name }) => name)).toEqual(["Strip0a", "Channel 1", "T0"]);
    expect(rows.map((row) => row.in)).toEqual([25, 50, 1000]);
    expect(rows.map((row) => row.out)).toEqual([12.5, 25, 500]);
  });

  it("judge all channels but T0", () => {
    expect(rowsOf(counted(1, 20, 0, 20, 0), []).map((row) => row.judgement)).toEqual(["", "dead", "", ""]);
    expect(rowsOf(counted(1, 20, 20, 20, 90_000), []).map((row) => row.judgement)).toEqual(["", "", "", ""]);
  });

  it("are none of no channels", () => {
    expect(rowsOf(counted(1), [])).toEqual([]);
  });

  it("stand by channel or by rate", () => {
    const rows = rowsOf(counted(1, 5, 7, 5, 9), []);
    expect(sorted(rows, "rate").map(({ channel }) => channel)).toEqual([3, 1, 0, 2]);
    expect(sorted(sorted(rows, "rate"), "channel").map(({ channel }) => channel)).toEqual([0, 1, 2, 3]);
  });
});

describe("the length of a bar", () => {
  it("is its part of the longest", () => {
    expect(barLength(25, 100, false)).toBe(0.25);
    expect(barLength(100, 100, false)).toBe(1);
  });

  it("falls by a fifth a decade on a logarithmic scale", () => {
    expect(barLength(100, 100, true)).toBe(1);
    expect(barLength(10, 100, true)).toBeCloseTo(0.8, 12);
    expect(barLength(0.0001, 100, true)).toBe(0);
  });

  it("is nothing of what is no rate", () => {
    for (const isLog of [true, false]) {
      expect(barLength(0, 100, isLog)).toBe(0);
      expect(barLength(-5, 100, isLog)).toBe(0);
      expect(barLength(NaN, 100, isLog)).toBe(0);
      expect(barLength(5, 0, isLog)).toBe(0);
      expect(barLength(5, NaN, isLog)).toBe(0);
    }
  });
});
