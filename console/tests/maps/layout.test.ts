import { expect, test } from "vitest";
import { layoutOf } from "../../src/charts/heat/heatLayout";
import { Placement } from "../../src/charts/heat/placement";

const rect = { left: 100, top: 50, width: 200, height: 80 };
const shown = { x: [10, 20], y: [0, 4] } as const;

test("rows go down from the top", () => {
  const place = new Placement(rect, shown, false);
  expect([place.xOf(10), place.xOf(15), place.yOf(0), place.yOf(4)]).toEqual([100, 200, 50, 130]);
  expect(place.placeOf(200, 90)).toEqual({ x: 15, y: 2 });
  expect(place.rectOf({ row: 1, column: 11 })).toEqual({ left: 120, top: 70, width: 20, height: 20 });
  expect(place.cellsOf(20, 20)).toEqual({ columns: 1, rows: 1 });
});

test("rows go up from the bottom", () => {
  const place = new Placement(rect, shown, true);
  expect([place.yOf(0), place.yOf(4)]).toEqual([130, 50]);
  expect(place.placeOf(100, 50)).toEqual({ x: 10, y: 4 });
  expect(place.placeOf(100, 130)).toEqual({ x: 10, y: 0 });
  expect(place.rectOf({ row: 1, column: 11 })).toEqual({ left: 120, top: 90, width: 20, height: 20 });
  expect(place.cellsOf(20, 20)).toEqual({ columns: 1, rows: -1 });
});

test("what is beside the map isn't in it", () => {
  const place = new Placement(rect, shown, false);
  expect(place.holds(100, 50)).toBe(true);
  expect(place.holds(300, 60)).toBe(false);
  expect(place.holds(150, 130)).toBe(false);
});

test("a large picture has all parts side by side", () => {
  const { map, above, beside, bar } = layoutOf(1000, 600, null, true);
  expect(above!.top + above!.height).toBeLessThan(map.top);
  expect(map.left + map.width).toBeLessThan(beside!.left);
  expect(beside!.left + beside!.width).toBeLessThan(bar!.left);
  expect(bar!.left + bar!.width).toBeLessThan(1000);
  expect(map.top + map.height).toBeLessThan(600);
});

test("a small one leaves the sums out", () => {
  const { above, beside, bar } = layoutOf(300, 150, null, true);
  expect([above, beside]).toEqual([null, null]);
  expect(bar).not.toBeNull();
  expect(layoutOf(300, 150, null, false).bar).toBeNull();
});

test("cells are squares where that is asked for", () => {
  const { map } = layoutOf(1000, 600, 2, true);
  expect(map.width / map.height).toBeCloseTo(2, 9);
  const tall = layoutOf(1000, 600, 0.5, true).map;
  expect(tall.width / tall.height).toBeCloseTo(0.5, 9);
});

test("a very long map stays broad enough to be seen", () => {
  const { map } = layoutOf(1000, 600, 512, true);
  expect(map.height).toBeGreaterThan(50);
});
