import { describe, expect, it } from "vitest";
import { channelsOfAddress, formatChannels, parseChannels, shifted, toggled } from "../../src/analysis/channels";

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

describe("channels in the address", () => {
  it("are read", () => {
    expect(channelsOfAddress("0,3,8-11", 32)).toEqual([0, 3, 8, 9, 10, 11]);
    expect(channelsOfAddress("3,0,3", 32)).toEqual([0, 3]);
    expect(channelsOfAddress("", 32)).toEqual([]);
    expect(channelsOfAddress("x,-1,1.5,5-3, 2 ", 32)).toEqual([2]);
    expect(channelsOfAddress("0-999999999", 3)).toEqual([0, 1, 2]);
    expect(channelsOfAddress("31,32", 32)).toEqual([31]);
    expect(channelsOfAddress("0", 0)).toEqual([]);
  });

  it("are written so that they are read again", () => {
    expect(formatChannels([0, 3, 8, 9, 10, 11])).toBe("0,3,8-11");
    expect(formatChannels([1, 0])).toBe("0,1");
    expect(formatChannels([])).toBe("");
    expect(channelsOfAddress(formatChannels([0, 1, 2, 5, 7, 8]), 9)).toEqual([0, 1, 2, 5, 7, 8]);
  });

  it("are switched one by one", () => {
    expect(toggled([1, 3], 2)).toEqual([1, 2, 3]);
    expect(toggled([1, 3], 3)).toEqual([1]);
  });
});
