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
  const turn = (deltaX: number, deltaY: number, shiftKey = false) =>
    turnOf({ deltaX, deltaY, deltaMode: 0, shiftKey });
  expect(turn(0, -100)).toEqual({ factor: 0.8, sideways: 0 });
  expect(turn(0, 120)).toEqual({ factor: 1.25, sideways: 0 });
  expect(turn(0, 120, true)).toEqual({ factor: 1, sideways: 1 });
  expect(turn(-500, 2)).toEqual({ factor: 1, sideways: -1 });
  expect(turn(0, 0)).toEqual({ factor: 1, sideways: 0 });
});

it("zooms and moves little by each of the many small turns of a touch pad", () => {
  const { factor } = turnOf({ deltaX: 0, deltaY: 2, deltaMode: 0, shiftKey: false });
  expect(factor ** 50).toBeCloseTo(1.25, 9);
  expect(turnOf({ deltaX: 10, deltaY: 0, deltaMode: 0, shiftKey: false }).sideways).toBeCloseTo(0.1, 9);
});

it("takes a notch told in lines or pages for one", () => {
  expect(turnOf({ deltaX: 0, deltaY: 3, deltaMode: 1, shiftKey: false }).factor).toBe(1.25);
  expect(turnOf({ deltaX: 0, deltaY: 1, deltaMode: 2, shiftKey: false }).factor).toBe(1.25);
});
