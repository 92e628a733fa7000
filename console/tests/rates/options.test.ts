import { expect, it } from "vitest";
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
