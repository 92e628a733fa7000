import { describe, expect, it } from "vitest";
import { curvesOf } from "../../src/views/rates/rateCurves";
import { record } from "./records";

// A record a second, 1 ns a tick: channel 0 counts 10 a second, then 30; half of it comes out.
const records = [0, 10, 20, 50, 80].map((count, i) => record(i * 1e9, i, [count, 7], [count / 2, 7]));
const name = (channel: number): string => `c${channel}`;

describe("the history of rates", () => {
  it("has the rate over the span before each record", () => {
    const set = curvesOf(records, [0], name, 1e-9, 1);
    expect([...set.x]).toEqual([-3, -2, -1, 0]);
    expect(set.curves.map(({ label }) => label)).toEqual(["c0 in", "c0 out"]);
    expect(Array.from(set.curves[0]!.values)).toEqual([10, 10, 30, 30]);
    expect(Array.from(set.curves[1]!.values)).toEqual([5, 5, 15, 15]);
  });

  it("is smoother over longer spans", () => {
    expect(Array.from(curvesOf(records, [0], name, 1e-9, 2).curves[0]!.values)).toEqual([10, 10, 20, 30]);
  });

  it("leaves out channels that there aren't", () => {
    const { curves } = curvesOf(records, [1, 2, 99], name, 1e-9, 1);
    expect(curves.map(({ label }) => label)).toEqual(["c1 in", "c1 out"]);
  });

  it("has a gap where records are missing, and none where they are always far apart", () => {
    const later = [...records, record(64e9, 64, [680, 7]), record(65e9, 65, [690, 7])];
    const values = Array.from(curvesOf(later, [0], name, 1e-9, 2).curves[0]!.values);
    expect(values).toEqual([10, 10, 20, 30, NaN, 10]);
    const seldom = [0, 60, 120].map((time) => record(time * 1e9, time, [time]));
    for (const value of Array.from(curvesOf(seldom, [0], name, 1e-9, 2).curves[0]!.values)) {
      expect(value).toBeCloseTo(1, 9);
    }
  });

  it("is empty of no record, and of one", () => {
    expect(curvesOf([], [0], name, 1e-9, 1)).toEqual({ x: new Float64Array(0), steps: false, curves: [] });
    expect(curvesOf(records.slice(0, 1), [0], name, 1e-9, 1).x).toHaveLength(0);
  });
});
