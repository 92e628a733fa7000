import { expect, test } from "vitest";
import { colourTables } from "../../src/charts/colourTables";
import { automaticScale, fixedScale, pixelOf, scaleFault, shareOf } from "../../src/charts/heat/heatScale";

const table = colourTables[0]!;

test("an automatic scale goes up to the largest count", () => {
  expect(automaticScale({ least: 20, most: 80 }, false)).toEqual({ low: 0, high: 80, isLog: false });
  expect(automaticScale({ least: 20, most: 80 }, true)).toEqual({ low: 10, high: 80, isLog: true });
  expect(automaticScale({ least: 1, most: 80 }, true)).toEqual({ low: 0.5, high: 80, isLog: true });
});

test("a scale of an empty map goes to one", () => {
  expect(automaticScale({ least: 0, most: 0 }, false)).toEqual({ low: 0, high: 1, isLog: false });
  expect(automaticScale({ least: 0, most: 0 }, true)).toEqual({ low: 0.5, high: 1, isLog: true });
});

test("a fixed scale is taken as it is, but a logarithmic one doesn't begin at zero", () => {
  expect(fixedScale(10, 20, false)).toEqual({ low: 10, high: 20, isLog: false });
  expect(fixedScale(0, 1000, true)).toEqual({ low: 0.5, high: 1000, isLog: true });
  const tiny = fixedScale(0, 0.25, true);
  expect(tiny.high).toBeGreaterThan(tiny.low);
});

test("shares are of the counts, or of their logarithms, and never beyond the ends", () => {
  const linear = { low: 10, high: 30, isLog: false };
  expect([0, 10, 15, 30, 4294967295].map((count) => shareOf(count, linear))).toEqual([0, 0, 0.25, 1, 1]);
  const log = { low: 1, high: 10000, isLog: true };
  expect(shareOf(0, log)).toBe(0);
  expect(shareOf(1, log)).toBe(0);
  expect(shareOf(100, log)).toBeCloseTo(0.5, 12);
  expect(shareOf(100000, log)).toBe(1);
});

test("a single count is above the foot of a logarithmic scale", () => {
  expect(shareOf(1, automaticScale({ least: 1, most: 1e6 }, true))).toBeGreaterThan(0.04);
});

test("pixels are the table's, from the first at the foot to the last at the top and beyond", () => {
  const pixel = pixelOf({ low: 0, high: 255, isLog: false }, table);
  expect(pixel(1)).toBe(table.pixels[1]);
  expect(pixel(254)).toBe(table.pixels[254]);
  expect(pixel(4294967295)).toBe(table.pixels[255]);
  const high = pixelOf({ low: 100, high: 200, isLog: true }, table);
  expect(high(1)).toBe(table.pixels[0]);
  expect(high(200)).toBe(table.pixels[255]);
  // 12 of 20 octaves, and 0.6 of 255 is 153
  expect(pixelOf({ low: 1, high: 2 ** 20, isLog: true }, table)(2 ** 12)).toBe(table.pixels[153]);
});

test("ends that make no scale are refused with a reason", () => {
  expect(scaleFault(0, 1)).toBeNull();
  expect(scaleFault(5, 5)).toContain("above the minimum");
  expect(scaleFault(9, 5)).toContain("above the minimum");
  expect(scaleFault(-1, 5)).toContain("0 or more");
  expect(scaleFault(NaN, 5)).toContain("numbers");
  expect(scaleFault(0, Infinity)).toContain("numbers");
});
