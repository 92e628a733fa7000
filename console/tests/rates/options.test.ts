import { expect, it } from "vitest";
import { formatChannels, parseChannels, toggled } from "../../src/views/common/channelList";
import { optionsOf } from "../../src/views/rates/options";

const of = (query: string): ReturnType<typeof optionsOf> => {
  const parameters = new URLSearchParams(query);
  return optionsOf((name) => parameters.get(name));
};

it("reads the operator's choice from the address", () => {
  expect(of("")).toEqual({ seconds: 10, order: "channel", isLog: false, tickNs: null });
  expect(of("over=60&sort=rate&log=1&tick=8")).toEqual({ seconds: 60, order: "rate", isLog: true, tickNs: 8 });
  expect(of("over=start").seconds).toBeNull();
});

it("takes what it doesn't know for no choice", () => {
  expect(of("over=7&sort=x&log=yes&tick=-1")).toEqual(of(""));
  expect(of("tick=").tickNs).toBeNull();
  expect(of("tick=Infinity").tickNs).toBeNull();
});

it("reads channels from the address", () => {
  expect(parseChannels("0,3,8-11", 32)).toEqual([0, 3, 8, 9, 10, 11]);
  expect(parseChannels("3,0,3", 32)).toEqual([0, 3]);
  expect(parseChannels("", 32)).toEqual([]);
  expect(parseChannels("x,-1,1.5,5-3, 2 ", 32)).toEqual([2]);
  expect(parseChannels("0-999999999", 3)).toEqual([0, 1, 2]);
  expect(parseChannels("31,32", 32)).toEqual([31]);
  expect(parseChannels("0", 0)).toEqual([]);
});

it("writes channels so that they are read again", () => {
  expect(formatChannels([0, 3, 8, 9, 10, 11])).toBe("0,3,8-11");
  expect(formatChannels([1, 0])).toBe("0,1");
  expect(formatChannels([])).toBe("");
  expect(parseChannels(formatChannels([0, 1, 2, 5, 7, 8]), 9)).toEqual([0, 1, 2, 5, 7, 8]);
});

it("switches a channel", () => {
  expect(toggled([1, 3], 2)).toEqual([1, 2, 3]);
  expect(toggled([1, 3], 3)).toEqual([1]);
});
