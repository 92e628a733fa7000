import type { Counts2d } from "../../model/data";
import type { Area, Cell } from "./heatArea";

/** What an area holds: sums by column and by row, each from its first on, and the range of its counts. */
export interface Summary {
  area: Area;
  columns: Float64Array;
  rows: Float64Array;
  total: number;
  most: number;
  /** The smallest count that isn't 0; 0 when all is empty. */
  least: number;
  /** Nothing when all is empty. */
  mostAt: Cell | null;
}

export function summaryOf(map: Counts2d, area: Area): Summary {
  const { counts } = map;
  const columns = new Float64Array(Math.max(0, area.right - area.left));
  const rows = new Float64Array(Math.max(0, area.bottom - area.top));
  let [total, most, mostIndex, least] = [0, 0, -1, Infinity];
  for (let row = area.top; row < area.bottom; ++row) {
    let sum = 0;
    let index = row * map.columns + area.left;
    for (let i = 0; i < columns.length; ++i, ++index) {
      const count = counts[index]!;
      sum += count;
      columns[i]! += count;
      if (count > most) {
        most = count;
        mostIndex = index;
      }
      if (count !== 0 && count < least) {
        least = count;
      }
    }
    rows[row - area.top] = sum;
    total += sum;
  }
  const row = Math.floor(mostIndex / map.columns);
  const mostAt = mostIndex < 0 ? null : { row, column: mostIndex % map.columns };
  return { area, columns, rows, total, most, least: most === 0 ? 0 : least, mostAt };
}
