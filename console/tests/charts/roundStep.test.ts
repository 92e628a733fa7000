import { expect, it } from "vitest";
import { roundStep } from "../../src/charts/roundStep";

it.each([
  [1, 1],
  [1.1, 2],
  [2, 2],
  [2.1, 5],
  [5.1, 10],
  [99, 100],
  [137, 200],
  [0.03, 0.05],
  [0.001, 0.001],
  [4e9, 5e9],
])("the round step for %d is %d", (least, step) => {
  expect(roundStep(least)).toBeCloseTo(step, 12);
});

it("is 1 for what is no size", () => {
  expect([0, -5, NaN, Infinity].map(roundStep)).toEqual([1, 1, 1, 1]);
});
