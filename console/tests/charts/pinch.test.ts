import { expect, it } from "vitest";
import { pinchFactor, turnOf } from "../../src/charts/pinch";

it("shows less when fingers part, and more when they meet", () => {
  expect(pinchFactor(100, 200)).toBe(0.5);
  expect(pinchFactor(200, 100)).toBe(2);
});

it("doesn't zoom with fingers too close to tell", () => {
  expect([pinchFactor(5, 100), pinchFactor(100, 5), pinchFactor(0, 0)]).toEqual([1, 1, 1]);
});

it("has the wheel zoom, and move with Shift or turned sideways", () => {
  const turn = (deltaX: number, deltaY: number, shiftKey = false) => turnOf({ deltaX, deltaY, shiftKey });
  expect(turn(0, -3)).toEqual({ factor: 0.8, sideways: 0 });
  expect(turn(0, 3)).toEqual({ factor: 1.25, sideways: 0 });
  expect(turn(0, 3, true)).toEqual({ factor: 1, sideways: 1 });
  expect(turn(-5, 2)).toEqual({ factor: 1, sideways: -1 });
  expect(turn(0, 0)).toEqual({ factor: 1, sideways: 0 });
});
