import type { Area, Cell } from "../../charts/heat/heatArea";
import type { Counts2d, PointCloud } from "../../model/data";

export const noPoints: PointCloud = { x: new Float64Array(0), y: new Float64Array(0) };

/** The latest `limit` of the points, oldest first. */
export function withNew(kept: PointCloud, more: PointCloud, limit: number): PointCloud {
  return { x: joined(kept.x, more.x, limit), y: joined(kept.y, more.y, limit) };
}

function joined(kept: Float64Array, more: Float64Array, limit: number): Float64Array {
  const size = Math.min(limit, kept.length + more.length);
  const result = new Float64Array(size);
  const fromMore = more.subarray(Math.max(0, more.length - size));
  const fromKept = kept.subarray(kept.length - (size - fromMore.length));
  result.set(fromKept);
  result.set(fromMore, fromKept.length);
  return result;
}

/** The points counted by column and share of energy, which is 0 at the edge of row 0 and 1 at that of the last. */
export function countsOfPoints({ x, y }: PointCloud, rows: number, columns: number): Counts2d {
  const counts = new Uint32Array(rows * columns);
  for (let i = 0; i < x.length; ++i) {
    const { column, row } = cellOf(x[i]!, y[i]!, rows);
    if (column >= 0 && column < columns && row >= 0) {
      ++counts[row * columns + column]!;
    }
  }
  return { rows, columns, counts };
}

function cellOf(x: number, y: number, rows: number): Cell {
  return { column: Math.floor(x), row: Math.min(rows - 1, Math.floor(y * rows)) };
}

/** The points in the cells of an area. */
export function pointsIn({ x, y }: PointCloud, rows: number, area: Area): PointCloud {
  const isIn = (_: number, i: number): boolean => {
    const { column, row } = cellOf(x[i]!, y[i]!, rows);
    return column >= area.left && column < area.right && row >= area.top && row < area.bottom;
  };
  return { x: x.filter(isIn), y: y.filter(isIn) };
}

/** The columns that the points need. */
export function columnsOf({ x }: PointCloud): number {
  return x.reduce((most, column) => Math.max(most, Math.floor(column) + 1), 0);
}
