import { describe, expect, it } from "vitest";
import { parseChannels, shifted } from "../../src/analysis/channels";

describe("a text of channels", () => {
  it("names single ones and ranges, in any order and with any blanks", () => {
    expect(parseChannels("0-3, 7", 32)).toEqual([0, 1, 2, 3, 7]);
    expect(parseChannels(" 7,0 - 3 ", 32)).toEqual([0, 1, 2, 3, 7]);
    expect(parseChannels("5 5;4–6", 32)).toEqual([4, 5, 6]);
    expect(parseChannels("", 32)).toEqual([]);
  });

  it("is cut to the channels there are, and to 64", () => {
    expect(parseChannels("30-99", 32)).toEqual([30, 31]);
    expect(parseChannels("0-100000000", 1e9)).toHaveLength(64);
  });

  it("is refused when it names none of them or is no such text", () => {
    for (const text of ["32", "3-1", "a", "-1", "1.5", "1-2-3", "1e3", "99999999999"]) {
      expect(parseChannels(text, 32)).toBeNull();
    }
  });
});

describe("the next channels", () => {
  it("are as many as those before", () => {
    expect(shifted([3], 1, 32)).toEqual([4]);
    expect(shifted([0, 1, 2, 3], 1, 32)).toEqual([4, 5, 6, 7]);
    expect(shifted([4, 6], -1, 32)).toEqual([1, 3]);
  });

  it("end where the channels do", () => {
    expect(shifted([30, 31], 1, 32)).toEqual([30, 31]);
    expect(shifted([1, 2, 3], -1, 32)).toEqual([0, 1, 2]);
    expect(shifted([], 1, 32)).toEqual([0]);
    expect(shifted([], 1, 0)).toEqual([]);
  });
});
