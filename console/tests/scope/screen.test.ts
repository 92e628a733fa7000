import { describe, expect, it } from "vitest";
import { columnsOf } from "../../src/views/scope/columns";
import { beyond, layoutOf, sampleAt, xOf, yOf } from "../../src/views/scope/layout";
import { nsOf, ticksOf, timeText, unitFor } from "../../src/views/scope/timeAxis";

describe("the screen", () => {
  it("has digital lanes below the analog traces, which share its height", () => {
    const layout = layoutOf(566, 444, 2, 3, false);
    // 400 px are left between the margins; lanes are 24 px high.
    expect(layout.bands).toEqual([{ top: 8, height: 328 }, { top: 8, height: 328 }]);
    expect(layout.lanes.map(({ top }) => top)).toEqual([336, 360, 384]);
    expect(layout.bottom).toBe(408);
    expect(layout.width).toBe(500);
  });

  it("has analog traces one below the other when asked for", () => {
    expect(layoutOf(566, 444, 4, 0, true).bands.map(({ top, height }) => [top, height])).toEqual([
      [8, 100],
      [108, 100],
      [208, 100],
      [308, 100],
    ]);
  });

  it("keeps room for analog traces above many lanes", () => {
    const layout = layoutOf(566, 444, 1, 64, false);
    expect(layout.bands[0]!.height).toBeCloseTo(220, 9);
    expect(layout.lanes[63]!.top + layout.lanes[63]!.height).toBeCloseTo(layout.bottom, 9);
  });

  it("holds digital traces alone, nothing, and no room at all", () => {
    expect(layoutOf(566, 444, 0, 2, true).lanes).toHaveLength(2);
    expect(layoutOf(566, 444, 0, 0, true)).toMatchObject({ bands: [], lanes: [] });
    expect(layoutOf(0, 0, 1, 1, false).width).toBe(1);
  });

  it("places samples, and finds them again", () => {
    const layout = layoutOf(566, 444, 1, 0, false);
    expect(xOf(100, layout, [100, 200])).toBe(56);
    expect(xOf(200, layout, [100, 200])).toBe(556);
    expect(sampleAt(306, layout, [100, 200])).toBe(150);
  });

  it("places values by offset and scale", () => {
    const area = { top: 10, height: 80 };
    const vertical = { offset: 1000, perDivision: 50 };
    expect(yOf(1000, area, vertical)).toBe(50);
    expect(yOf(1050, area, vertical)).toBe(40);
    expect(yOf(800, area, vertical)).toBe(90);
  });
});

describe("columns of pixels", () => {
  it("have the least and the greatest of their samples", () => {
    const samples = Float64Array.from([9, 1, 5, 2, 8, 3, 7, 9]);
    const { low, high } = columnsOf(samples, 1, 6, 3);
    expect([...low]).toEqual([1, 2, 3]);
    expect([...high]).toEqual([5, 8, 7]);
  });

  it("lose no sample where they don't come out even", () => {
    const samples = Float64Array.from({ length: 10 }, (_, i) => i);
    const { low, high } = columnsOf(samples, 0, 9, 3);
    expect(low[0]).toBe(0);
    expect(high[2]).toBe(9);
    expect([...high].slice(0, 2).map((value, i) => low[i + 1]! - value)).toEqual([1, 1]);
  });
});

describe("the time axis", () => {
  it("counts samples until the operator says how long they are", () => {
    expect(unitFor(4096, null)).toEqual({ name: "samples", perSample: 1 });
    expect(timeText(137, unitFor(4096, null))).toBe("137 samples");
  });

  it("chooses its unit by what is looked at", () => {
    expect(unitFor(200, 8)).toEqual({ name: "ns", perSample: 8 });
    expect(unitFor(512, 8)).toEqual({ name: "µs", perSample: 0.008 });
    expect(unitFor(1_000_000, 8)).toEqual({ name: "ms", perSample: 8e-6 });
    expect(timeText(137, unitFor(512, 8))).toBe("1.096 µs");
  });

  it("has round ticks within", () => {
    const texts = (from: number, to: number, ns: number | null, count: number): string[] =>
      ticksOf(from, to, unitFor(to - from, ns), count).map(({ text }) => text);
    expect(texts(0, 511, null, 6)).toEqual(["0", "100", "200", "300", "400", "500"]);
    expect(texts(100, 108, null, 4)).toEqual(["100", "102", "104", "106", "108"]);
    expect(texts(0, 511, 8, 5)).toEqual(["0", "1", "2", "3", "4"]);
    expect(ticksOf(0, 511, unitFor(511, 8), 5)[1]!.at).toBeCloseTo(125, 9);
    expect(texts(10, 11, null, 5)).toEqual(["10.0", "10.2", "10.4", "10.6", "10.8", "11.0"]);
  });

  it("takes lengths of time only", () => {
    expect(nsOf("8")).toBe(8);
    expect(nsOf("0.5")).toBe(0.5);
    expect([null, "", "0", "-8", "x", "Infinity", "1e99"].map(nsOf)).toEqual(Array(7).fill(null));
  });
});

describe("traces beyond the screen", () => {
  const vertical = { offset: 0, perDivision: 1 };
  const samples = Float64Array.from([0, 5, 9, 4, -4, -7, 0]);

  it("are found where they are furthest from it", () => {
    expect(beyond(samples, [0, 6], vertical)).toEqual({ above: 2, below: 5 });
  });

  it("aren't told of where they end at its edge, or out of sight", () => {
    expect(beyond(samples, [3, 4], vertical)).toEqual({ above: -1, below: -1 });
    expect(beyond(samples, [0, 6], { offset: 1, perDivision: 2.1 })).toEqual({ above: -1, below: -1 });
  });
});
