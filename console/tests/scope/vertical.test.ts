import { describe, expect, it } from "vitest";
import { fitted, formatSettings, neighbourStep, parseSettings } from "../../src/views/scope/vertical";

describe("a nice step", () => {
  it("has neighbours in the series, both ways", () => {
    const up = [1, 2, 5, 10, 20].map((step) => neighbourStep(step, true));
    expect(up).toEqual([2, 5, 10, 20, 50]);
    expect(up.map((step) => neighbourStep(step, false))).toEqual([1, 2, 5, 10, 20]);
    expect(neighbourStep(0.1, false)).toBeCloseTo(0.05, 12);
  });
});

describe("traces that fit", () => {
  it.each([
    [988, 2155],
    [-2048, 2047],
    [0, 16383],
    [5, 6],
    [0, 0.013],
  ])("are seen whole and with a margin from %d to %d", (low, high) => {
    const { offset, perDivision } = fitted({ low, high });
    expect(offset + 3.5 * perDivision).toBeGreaterThanOrEqual(high - 1e-9);
    expect(offset - 3.5 * perDivision).toBeLessThanOrEqual(low + 1e-9);
    // And no step finer would do: 2.5 is the greatest ratio of two steps.
    expect((high - low) / perDivision).toBeGreaterThan(6 / 2.5 - 1e-9);
  });

  it("stand on round values", () => {
    // 1167 over 6 divisions is 194.5 each, so 200; the middle 1571.5 goes to the nearest 200.
    expect(fitted({ low: 988, high: 2155 })).toEqual({ offset: 1600, perDivision: 200 });
  });

  it("have some scale when they are flat, or when nothing was seen", () => {
    expect(fitted({ low: 7, high: 7 })).toEqual({ offset: 7, perDivision: 1 });
    expect(fitted(null)).toEqual({ offset: 0, perDivision: 1 });
  });
});

describe("settings in the address", () => {
  it("are read as they were written", () => {
    const settings = new Map([
      ["0", { offset: 1000, perDivision: 50 }],
      ["3.1", { offset: -0.5 }],
      ["12", { perDivision: 20 }],
    ]);
    expect(formatSettings(settings)).toBe("0:1000:50;3.1:-0.5:;12::20");
    expect(parseSettings("0:1000:50;3.1:-0.5:;12::20")).toEqual(settings);
  });

  it("are none when nothing is set", () => {
    expect(formatSettings(new Map())).toBeNull();
    expect(formatSettings(new Map([["0", {}]]))).toBeNull();
    expect(parseSettings("").size).toBe(0);
  });

  it("leave out what can't be shown", () => {
    expect(parseSettings("0:x:50;1:1:0;2:1:-3;3:1e300:1e300;:1:1;a:1:1;0d1:1:1")).toEqual(
      new Map([["0", { perDivision: 50 }], ["1", { offset: 1 }], ["2", { offset: 1 }]]),
    );
  });
});
