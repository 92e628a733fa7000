import { expect, test } from "vitest";
import { csvOfCounts, csvOfPoints } from "../../src/charts/heat/heatCsv";
import { columnsOf, countsOfPoints, noPoints, pointsIn, withNew } from "../../src/views/maps/points";

const cloud = (...x: number[]): { x: Float64Array; y: Float64Array } => ({
  x: Float64Array.from(x),
  y: Float64Array.from(x, (value) => value / 10),
});

test("new points follow those there were", () => {
  expect(withNew(cloud(1, 2), cloud(3), 10)).toEqual(cloud(1, 2, 3));
  expect(withNew(noPoints, cloud(3), 10)).toEqual(cloud(3));
  expect(withNew(cloud(1), noPoints, 10)).toEqual(cloud(1));
});

test("the oldest make room for the newest", () => {
  expect(withNew(cloud(1, 2, 3), cloud(4, 5), 3)).toEqual(cloud(3, 4, 5));
  expect(withNew(cloud(1, 2, 3), cloud(4, 5, 6, 7), 3)).toEqual(cloud(5, 6, 7));
  expect(withNew(cloud(1, 2, 3), noPoints, 3)).toEqual(cloud(1, 2, 3));
});

test("points are counted by column and share, those beyond the map are not", () => {
  const points = {
    x: Float64Array.of(0, 1, 1, 2, -1, NaN, 0),
    y: Float64Array.of(0, 0.5, 1, 0.5, 0.5, 0.5, -0.1),
  };
  expect([...countsOfPoints(points, 2, 2).counts]).toEqual([1, 0, 0, 2]);
});

test("the columns are as many as the points need", () => {
  expect(columnsOf(cloud(0, 7, 3))).toBe(8);
  expect(columnsOf(noPoints)).toBe(0);
});

test("a file of counts has the numbers of the rows and columns shown", () => {
  const map = { rows: 3, columns: 3, counts: Uint32Array.of(0, 1, 2, 10, 11, 12, 20, 21, 4294967295) };
  expect(csvOfCounts(map, { left: 1, right: 3, top: 1, bottom: 3 })).toBe("row,1,2\n1,11,12\n2,21,4294967295\n");
});

test("points are told by the cells that are looked at", () => {
  const points = cloud(0, 3, 4, 5, 10);
  expect(pointsIn(points, 10, { left: 3, right: 11, top: 4, bottom: 10 })).toEqual(cloud(4, 5, 10));
  expect(pointsIn(points, 10, { left: 0, right: 4, top: 0, bottom: 10 })).toEqual(cloud(0, 3));
});

test("a file of points has a line for each", () => {
  expect(csvOfPoints(cloud(4, 5), ["column", "share"])).toBe("column,share\n4,0.4\n5,0.5\n");
  expect(csvOfPoints(noPoints, ["column", "share"])).toBe("column,share\n");
});
