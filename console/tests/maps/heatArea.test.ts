import { expect, test } from "vitest";
import {
  areaOf,
  cellAt,
  countAt,
  isSeen,
  isWithin,
  movedWindow,
  shownOf,
  wholeMap,
  windowAround,
  zoomedWindow,
} from "../../src/charts/heat/heatArea";

const size = { rows: 20, columns: 40 };
const shown = { x: [10, 20], y: [4, 12] } as const;

test("nothing chosen shows all", () => {
  expect(shownOf(wholeMap, size)).toEqual({ x: [0, 40], y: [0, 20] });
});

test("what is chosen is cut to the map", () => {
  expect(shownOf({ x: [-5, 5], y: [15, 30] }, size)).toEqual({ x: [0, 10], y: [5, 20] });
  expect(shownOf({ x: [0, 1000], y: null }, size).x).toEqual([0, 40]);
});

test("a map that is smaller than the smallest part is shown whole", () => {
  expect(shownOf({ x: [0.5, 1], y: [0, 1] }, { rows: 1, columns: 2 })).toEqual({ x: [0, 2], y: [0, 1] });
  expect(shownOf(wholeMap, { rows: 0, columns: 0 })).toEqual({ x: [0, 0], y: [0, 0] });
});

test("zooming keeps the place under the mouse where it is", () => {
  expect(zoomedWindow(shown, { x: 12, y: 4 }, 0.5, size)).toEqual({ x: [11, 16], y: [4, 8] });
});

test("zooming in ends at four cells, zooming out at the whole map", () => {
  const near = shownOf(zoomedWindow(shown, { x: 15, y: 8 }, 0.01, size), size);
  expect(near.x[1] - near.x[0]).toBeCloseTo(4, 9);
  expect(near.y[1] - near.y[0]).toBeCloseTo(4, 9);
  expect(zoomedWindow(shown, { x: 15, y: 8 }, 10, size)).toEqual(wholeMap);
});

test("moving stops at the edges", () => {
  expect(movedWindow(shown, 3, -2, size)).toEqual({ x: [13, 23], y: [2, 10] });
  expect(movedWindow(shown, -100, 100, size)).toEqual({ x: [0, 10], y: [12, 20] });
});

test("a cell is revealed by the least move", () => {
  expect(windowAround({ row: 5, column: 12 }, shown, size)).toEqual({ x: [10, 20], y: [4, 12] });
  expect(windowAround({ row: 12, column: 20 }, shown, size)).toEqual({ x: [11, 21], y: [5, 13] });
  expect(windowAround({ row: 3, column: 0 }, shown, size)).toEqual({ x: [0, 10], y: [3, 11] });
});

test("a cell is seen when all of it is", () => {
  expect(isSeen({ row: 4, column: 19 }, shown)).toBe(true);
  expect(isSeen({ row: 4, column: 19 }, { x: [10, 19.5], y: [4, 12] })).toBe(false);
  expect(isSeen({ row: 3, column: 15 }, shown)).toBe(false);
});

test("cells that are seen in part belong to the area", () => {
  expect(areaOf({ x: [0.2, 3.1], y: [1, 2] })).toEqual({ left: 0, right: 4, top: 1, bottom: 2 });
});

test("a place belongs to the cell around it, and to none outside the map", () => {
  expect(cellAt({ x: 39.99, y: 0 }, size)).toEqual({ row: 0, column: 39 });
  expect(cellAt({ x: 40, y: 0 }, size)).toBeNull();
  expect(cellAt({ x: 0, y: -0.01 }, size)).toBeNull();
  expect(isWithin({ row: 20, column: 0 }, size)).toBe(false);
});

test("counts lie row by row", () => {
  const map = { rows: 2, columns: 3, counts: Uint32Array.of(1, 2, 3, 4, 5, 6) };
  expect(countAt(map, { row: 1, column: 0 })).toBe(4);
  expect(countAt(map, { row: 9, column: 9 })).toBe(0);
});
