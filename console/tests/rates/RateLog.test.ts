import { describe, expect, it } from "vitest";
import { RateLog } from "../../src/views/rates/RateLog";
import { record } from "./records";

const times = (log: RateLog): number[] => log.records.map(({ timestamp }) => timestamp);

describe("the log of rates", () => {
  it("keeps records in their order, each once", () => {
    const log = new RateLog();
    expect(log.add(record(1, 1, [1, 1]))).toBe(true);
    expect(log.add(record(2, 2, [1, 2]))).toBe(true);
    expect(log.add(record(2, 2, [1, 2]))).toBe(false);
    expect(times(log)).toEqual([1, 2]);
  });

  it("begins anew when time goes back", () => {
    const log = new RateLog();
    [record(10, 1, [0, 1]), record(20, 2, [0, 2]), record(5, 1, [3, 9])].forEach((one) => log.add(one));
    expect(times(log)).toEqual([5]);
  });

  it("begins anew when a counter falls, in or out", () => {
    const log = new RateLog();
    [record(10, 1, [5, 1]), record(20, 2, [4, 2])].forEach((one) => log.add(one));
    expect(times(log)).toEqual([20]);
    log.add(record(30, 3, [5, 3], [3, 3]));
    expect(times(log)).toEqual([30]);
  });

  it("begins anew when the number of channels changes", () => {
    const log = new RateLog();
    [record(10, 1, [1, 1]), record(20, 2, [2, 2, 2])].forEach((one) => log.add(one));
    expect(times(log)).toEqual([20]);
  });

  it("forgets the oldest beyond an hour of records", () => {
    const log = new RateLog();
    for (let i = 0; i < 10_000; ++i) {
      log.add(record(i, 1, [i]));
      expect(log.records.length).toBeLessThan(3_600 + 450);
    }
    expect(log.records.length).toBeGreaterThanOrEqual(3_600);
    expect(log.records.at(-1)?.timestamp).toBe(9_999);
  });

  it("keeps fewer records of many channels, and two at least", () => {
    const log = new RateLog();
    const counts = Array<number>(250_001).fill(1);
    for (let i = 0; i < 4; ++i) {
      log.add(record(i, 1, counts));
    }
    expect(times(log)).toEqual([2, 3]);
  });

  it("moves its records seldom, however many there are", () => {
    const log = new RateLog();
    let moved = 0;
    for (let i = 0; i < 10_000; ++i) {
      const [before] = log.records;
      log.add(record(i, 1, [i]));
      moved += before === log.records[0] ? 0 : 1;
    }
    expect(moved).toBeLessThan(20);
  });

  it("tells by its version whether it changed", () => {
    const log = new RateLog();
    const versions = [record(1, 1, [1]), record(1, 1, [1]), record(2, 1, [2]), record(1, 1, [0])].map((one) => {
      log.add(one);
      return log.version;
    });
    expect(versions[1]).toBe(versions[0]);
    expect(new Set(versions).size).toBe(3);
  });

  it("is filled with what was missed, in its place", () => {
    const log = new RateLog();
    const all = [1, 2, 3, 4, 5, 6].map((time) => record(time, time, [time]));
    [all[0]!, all[1]!, all[3]!].forEach((one) => log.add(one));
    log.fill(all.slice(1));
    expect(times(log)).toEqual([1, 2, 3, 4, 5, 6]);
  });

  it("keeps a gap where the history begins later", () => {
    const log = new RateLog();
    log.add(record(1, 1, [1]));
    log.fill([record(8, 8, [8]), record(9, 9, [9])]);
    expect(times(log)).toEqual([1, 8, 9]);
    log.fill([]);
    expect(times(log)).toEqual([1, 8, 9]);
  });

  it("forgets what was counted before the server was started anew, though its time was later", () => {
    const log = new RateLog();
    [5, 50, 60].forEach((time) => log.add(record(time, time, [time])));
    log.fill([record(20, 20, [20]), record(70, 70, [70])]);
    expect(times(log)).toEqual([20, 70]);
  });
});
