import { expect, test } from "vitest";
import { axisTicks, cellAxis } from "../../src/charts/heat/heatAxis";
import { logTicks, roundTicks } from "../../src/charts/heat/ticks";

test("ticks are round", () => {
  expect(roundTicks(0, 10, 5)).toEqual([0, 2, 4, 6, 8, 10]);
  expect(roundTicks(0, 1, 5)).toEqual([0, 0.2, 0.4, 0.6, 0.8, 1]);
  expect(roundTicks(-3, 14, 4)).toEqual([0, 5, 10]);
  expect(roundTicks(0, 4294967295, 3)).toEqual([0, 2e9, 4e9]);
});

test("ticks of whole numbers aren't closer than these", () => {
  expect(roundTicks(-0.5, 3.5, 20, 1)).toEqual([0, 1, 2, 3]);
});

test("a range without width, or no room, has no ticks", () => {
  expect(roundTicks(5, 5, 4)).toEqual([]);
  expect(roundTicks(5, 1, 4)).toEqual([]);
  expect(roundTicks(NaN, 1, 4)).toEqual([]);
  expect(roundTicks(0, 1, 0.3)).toEqual([]);
});

test("a logarithmic scale has powers of ten, fewer where there is no room", () => {
  expect(logTicks(0.5, 20000, 5)).toEqual([1, 10, 100, 1000, 10000]);
  expect(logTicks(0.5, 4e9, 5)).toEqual([1, 100, 10000, 1e6, 1e8]);
});

test("a short logarithmic scale has more", () => {
  expect(logTicks(0.5, 20, 6)).toEqual([0.5, 1, 2, 5, 10, 20]);
});

test("a logarithmic scale that begins at nothing has none", () => {
  expect(logTicks(0, 10, 5)).toEqual([]);
  expect(logTicks(10, 1, 5)).toEqual([]);
});

test("an axis of cells names each in its middle", () => {
  expect(axisTicks(cellAxis("row"), 0, 3, 10)).toEqual([
    { at: 0.5, text: "0" },
    { at: 1.5, text: "1" },
    { at: 2.5, text: "2" },
  ]);
  expect(axisTicks(cellAxis("row"), 0, 1, 10)).toEqual([{ at: 0.5, text: "0" }]);
});

test("an axis of shares goes from edge to edge", () => {
  expect(axisTicks({ label: "share", cellsPerUnit: 64, zero: 0 }, 0, 64, 2)).toEqual([
    { at: 0, text: "0" },
    { at: 32, text: "0.5" },
    { at: 64, text: "1" },
  ]);
});
