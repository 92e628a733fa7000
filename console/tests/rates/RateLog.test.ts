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
    for (let i = 0; i < 3_602; ++i) {
      log.add(record(i, 1, [i]));
    }
    expect(log.records).toHaveLength(3_600);
    expect(log.records[0]?.timestamp).toBe(2);
  });

  it("keeps fewer records of many channels, and two at least", () => {
    const log = new RateLog();
    const counts = Array<number>(250_001).fill(1);
    for (let i = 0; i < 4; ++i) {
      log.add(record(i, 1, counts));
    }
    expect(times(log)).toEqual([2, 3]);
  });

  it("doesn't change what it gave", () => {
    const log = new RateLog();
    log.add(record(1, 1, [1]));
    const given = log.records;
    log.add(record(2, 2, [2]));
    expect(given).toHaveLength(1);
  });
});
