import { describe, expect, it } from "vitest";
import { beginOf, between, latestCounts, secondsOf, sinceStart, tickOf } from "../../src/views/rates/rateTimes";
import { record } from "./records";

describe("the server's seconds", () => {
  it("are counts by rate of the channel that counts most", () => {
    // 11375 / 2454.68 and 4634 / 1000, as the server printed them with six digits.
    const printed = record(4_633_284_833, 1, [11375, 4634]);
    printed.ratesIn.set([2454.68, 1000]);
    expect(secondsOf(printed)).toBeCloseTo(4.634, 4);
  });

  it("aren't known when nothing counts, or rates are no numbers", () => {
    expect(secondsOf(record(1, 1, [0, 0]))).toBeNull();
    expect(secondsOf(record(1, 1, []))).toBeNull();
    const broken = record(1, 1, [5]);
    broken.ratesIn.set([NaN]);
    expect(secondsOf(broken)).toBeNull();
  });
});

describe("a unit of the timestamps", () => {
  it("is the time that passed by the ticks that passed", () => {
    // 8 ns a tick: 10 s are 1.25e9 ticks, wherever they begin.
    const records = [record(7e9, 2, [200]), record(7.5e9, 6, [600]), record(8.25e9, 12, [1200])];
    expect(tickOf(records)! * 1e9).toBeCloseTo(8, 6);
  });

  it("leaves out records before anything counted", () => {
    expect(tickOf([record(0, 1, [0]), record(1e9, 1, [5]), record(6e9, 6, [30])])! * 1e9).toBeCloseTo(1, 6);
  });

  it("isn't known from too little", () => {
    expect(tickOf([])).toBeNull();
    expect(tickOf([record(1, 1, [1])])).toBeNull();
    expect(tickOf([record(1e9, 1, [1]), record(3.9e9, 3.9, [4])])).toBeNull();
    expect(tickOf([record(1e9, 1, [1]), record(1e9, 9, [9])])).toBeNull();
  });
});

describe("the record that a rate begins at", () => {
  const records = [0, 10, 20, 30, 40].map((time) => record(time, 1, [time]));

  it("is the oldest of the span", () => {
    expect(beginOf(records, 4, 20)).toBe(2);
    expect(beginOf(records, 4, 29)).toBe(2);
    expect(beginOf(records, 4, 1000)).toBe(0);
  });

  it("is the one before where the span is shorter than that", () => {
    expect(beginOf(records, 4, 1)).toBe(3);
  });

  it("is none for the first", () => {
    expect(beginOf(records, 0, 100)).toBe(-1);
  });
});

it("counts between two records", () => {
  const counted = between(record(1e9, 1, [100, 5], [90, 5]), record(3e9, 3, [300, 5], [280, 5]), 1e-9);
  expect(counted.seconds).toBeCloseTo(2, 9);
  expect([...counted.in]).toEqual([200, 0]);
  expect([...counted.out]).toEqual([190, 0]);
});

it("counts since the start", () => {
  const counted = sinceStart(record(1, 4, [8, 4], [6, 4]));
  expect(counted.seconds).toBe(2 * 2);
  expect([[...counted.in], [...counted.out]]).toEqual([[8, 4], [6, 4]]);
  expect(sinceStart(record(1, 4, [0])).seconds).toBeNaN();
});

describe("what was counted last", () => {
  const records = [0, 1, 2, 3].map((second) => record(second * 1e9, second, [second * second]));
  const read = (tick: number | null, seconds: number | null): [number, number] => {
    const counted = latestCounts(records, tick, seconds)!;
    return [counted.in[0]!, Math.round(counted.seconds)];
  };

  it("is that of the last seconds", () => {
    expect(read(1e-9, 1)).toEqual([5, 1]);
    expect(read(1e-9, 2)).toEqual([8, 2]);
  });

  it("is that since the start when asked for, and when the unit isn't known", () => {
    expect(read(1e-9, null)).toEqual([9, 3]);
    expect(read(null, 2)).toEqual([9, 3]);
  });

  it("is that since the start of the first record, and nothing of none", () => {
    expect(latestCounts(records.slice(1, 2), 1e-9, 10)?.in[0]).toBe(1);
    expect(latestCounts([], 1e-9, 10)).toBeNull();
  });
});
