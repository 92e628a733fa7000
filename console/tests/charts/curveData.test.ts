import { expect, it } from "vitest";
import { columnsOf } from "../../src/charts/curveData";
import type { Curve, CurveSet } from "../../src/charts/curves";

const set = (curve: Partial<Curve>): CurveSet => ({
  x: new Float64Array(3),
  curves: [{ label: "", colour: 0, values: [], ...curve }],
  steps: true,
});

it("hands on the values as they are", () => {
  const values = [0, 1, 2];
  expect(columnsOf(set({ values }), false)[0]).toBe(values);
});

it("puts what isn't above zero at the foot of a logarithmic axis", () => {
  expect(Array.from(columnsOf(set({ values: [0, 1, -3, NaN] }), true)[0]!)).toEqual([0.5, 1, 0.5, 0.5]);
});

it("leaves gaps, on either axis", () => {
  const curve = set({ values: [NaN, 0, 2], gaps: true });
  expect(columnsOf(curve, false)[0]).toEqual([null, 0, 2]);
  expect(columnsOf(curve, true)[0]).toEqual([null, 0.5, 2]);
});
