import { expect, test } from "vitest";
import { grown, joinFor, paint } from "../../src/charts/heat/paint";
import { summaryOf } from "../../src/charts/heat/summary";

const map = { rows: 3, columns: 4, counts: Uint32Array.of(0, 1, 2, 3, 10, 0, 12, 13, 20, 21, 22, 4294967295) };
const whole = { left: 0, right: 4, top: 0, bottom: 3 };
const one = { columns: 1, rows: 1 };
const same = (count: number): number => count;

function painted(area: typeof whole, join: typeof one, size: number): number[] {
  const pixels = new Uint32Array(size);
  paint(map, area, join, same, pixels);
  return [...pixels];
}

test("each cell has its pixel, row by row", () => {
  expect(painted(whole, one, 12)).toEqual([...map.counts]);
});

test("a part of the map is painted alone", () => {
  expect(painted({ left: 1, right: 3, top: 1, bottom: 3 }, one, 4)).toEqual([0, 12, 21, 22]);
});

test("cells without counts are clear, whatever the colours", () => {
  const pixels = new Uint32Array(12).fill(77);
  paint(map, whole, one, () => 5, pixels);
  expect(pixels[0]).toBe(0);
  expect(pixels[1]).toBe(5);
  expect(pixels[5]).toBe(0);
});

test("joined cells show their largest count, over the edge of the map, too", () => {
  const join = { columns: 3, rows: 2 };
  expect(grown(whole, join)).toEqual({ left: 0, right: 6, top: 0, bottom: 4 });
  expect(painted(grown(whole, join), join, 4)).toEqual([12, 13, 22, 4294967295]);
});

test("cells are joined only where there are more of them than pixels", () => {
  expect(joinFor(whole, 4, 3)).toEqual(one);
  expect(joinFor(whole, 3.9, 1)).toEqual({ columns: 2, rows: 3 });
  expect(joinFor(whole, 0, 0)).toEqual({ columns: 4, rows: 3 });
  expect(joinFor({ left: 0, right: 0, top: 0, bottom: 0 }, 10, 10)).toEqual(one);
});

test("sums are those of what is shown", () => {
  expect(summaryOf(map, { left: 0, right: 2, top: 1, bottom: 3 })).toEqual({
    area: { left: 0, right: 2, top: 1, bottom: 3 },
    columns: Float64Array.of(30, 21),
    rows: Float64Array.of(10, 41),
    total: 51,
    most: 21,
    least: 10,
    mostAt: { row: 2, column: 1 },
  });
});

test("sums of large counts are exact", () => {
  const counts = new Uint32Array(4).fill(4294967295);
  const { total } = summaryOf({ rows: 2, columns: 2, counts }, { left: 0, right: 2, top: 0, bottom: 2 });
  expect(total).toBe(17179869180);
});

test("an empty map has no fullest cell", () => {
  const counts = new Uint32Array(2);
  const empty = summaryOf({ rows: 1, columns: 2, counts }, { left: 0, right: 2, top: 0, bottom: 1 });
  expect(empty.mostAt).toBeNull();
  expect([empty.least, empty.most]).toEqual([0, 0]);
});

test("a map without cells has no counts", () => {
  const nothing = { rows: 0, columns: 0, counts: new Uint32Array(0) };
  expect(summaryOf(nothing, { left: 0, right: 0, top: 0, bottom: 0 }).total).toBe(0);
});
