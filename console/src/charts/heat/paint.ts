import type { Counts2d } from "../../model/data";
import type { Area } from "./heatArea";

/** How many cells share a pixel on each axis, so that none falls between the pixels. */
export interface Join {
  columns: number;
  rows: number;
}

/** Where there are more cells than pixels, cells are joined. */
export function joinFor(area: Area, width: number, height: number): Join {
  const joined = (cells: number, pixels: number): number => Math.max(1, Math.ceil(cells / Math.max(1, pixels)));
  return { columns: joined(area.right - area.left, width), rows: joined(area.bottom - area.top, height) };
}

/** The area grown to whole joined cells. */
export function grown(area: Area, join: Join): Area {
  const down = (at: number, step: number): number => Math.floor(at / step) * step;
  const up = (at: number, step: number): number => Math.ceil(at / step) * step;
  return {
    left: down(area.left, join.columns),
    right: up(area.right, join.columns),
    top: down(area.top, join.rows),
    bottom: up(area.bottom, join.rows),
  };
}

/**
 * A pixel for each joined cell of a grown area, row by row: that of the largest count, so that a single count is
 * seen, and clear where nothing was counted.
 */
export function paint(
  map: Counts2d,
  area: Area,
  join: Join,
  pixelOf: (count: number) => number,
  pixels: Uint32Array,
): void {
  const isJoined = join.rows * join.columns > 1;
  let next = 0;
  for (let row = area.top; row < area.bottom; row += join.rows) {
    for (let column = area.left; column < area.right; column += join.columns) {
      const count = isJoined ? largest(map, row, column, join) : map.counts[row * map.columns + column]!;
      pixels[next++] = count === 0 ? 0 : pixelOf(count);
    }
  }
}

function largest(map: Counts2d, top: number, left: number, join: Join): number {
  const [bottom, right] = [Math.min(map.rows, top + join.rows), Math.min(map.columns, left + join.columns)];
  let most = 0;
  for (let row = top; row < bottom; ++row) {
    for (let index = row * map.columns + left; index < row * map.columns + right; ++index) {
      if (map.counts[index]! > most) {
        most = map.counts[index]!;
      }
    }
  }
  return most;
}
