import type { Cell, Place, Shown } from "./heatArea";
import type { Rect } from "./heatLayout";

/** Ties places of the map, in columns and rows, to those of the picture. */
export class Placement {
  constructor(
    readonly rect: Rect,
    readonly shown: Shown,
    private readonly isUpward: boolean,
  ) {}

  xOf(column: number): number {
    const [from, to] = this.shown.x;
    return this.rect.left + ((column - from) / (to - from)) * this.rect.width;
  }

  yOf(row: number): number {
    const [from, to] = this.shown.y;
    const share = (row - from) / (to - from);
    return this.rect.top + (this.isUpward ? 1 - share : share) * this.rect.height;
  }

  placeOf(x: number, y: number): Place {
    const { columns, rows } = this.cellsOf(x - this.rect.left, y - this.rect.top);
    return { x: this.shown.x[0] + columns, y: (this.isUpward ? this.shown.y[1] : this.shown.y[0]) + rows };
  }

  /** The columns and rows that lie in a way across the picture. */
  cellsOf(width: number, height: number): { columns: number; rows: number } {
    const { x, y } = this.shown;
    const rows = (height / this.rect.height) * (y[1] - y[0]);
    return { columns: (width / this.rect.width) * (x[1] - x[0]), rows: this.isUpward ? -rows : rows };
  }

  holds(x: number, y: number): boolean {
    const { left, top, width, height } = this.rect;
    return x >= left && x < left + width && y >= top && y < top + height;
  }

  /** Where cells are, from one edge to the other. */
  rectOf({ column, row }: Cell, columns = 1, rows = 1): Rect {
    const [left, right] = [this.xOf(column), this.xOf(column + columns)];
    const [a, b] = [this.yOf(row), this.yOf(row + rows)];
    return { left, top: Math.min(a, b), width: right - left, height: Math.abs(b - a) };
  }
}
