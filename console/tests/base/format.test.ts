import { describe, expect, it } from "vitest";
import { duration, short, whole } from "../../src/base/format";

describe("Numbers", () => {
  it("are short with three digits and a prefix", () => {
    expect([0, 7, 0.5, 12.34, 999, 999.4, 1000, 1234].map(short)).toEqual([
      "0", "7", "0.50", "12.3", "999", "999.4", "1.00 k", "1.23 k",
    ]);
    expect([12345, 99_960, 123456, 999_600, 1.5e9, 2e16, -1500].map(short)).toEqual([
      "12.3 k", "100 k", "123 k", "1.00 M", "1.50 G", "20.0 P", "−1.50 k",
    ]);
    expect([NaN, Infinity].map(short)).toEqual(["–", "–"]);
  });
  it("are whole in groups of three", () => {
    expect([0, 999, 1000, 1234567, 4294967295].map(whole)).toEqual([
      "0", "999", "1\u202f000", "1\u202f234\u202f567", "4\u202f294\u202f967\u202f295",
    ]);
    expect(whole(NaN)).toBe("–");
  });
});

describe("A time", () => {
  it("is as long as it must be", () => {
    expect([0, 7.9, 754, 12_345, 189_945, -5].map(duration)).toEqual([
      "0:00", "0:07", "12:34", "3:25:45", "2 d 04:45:45", "0:00",
    ]);
    expect(duration(NaN)).toBe("–");
  });
});
