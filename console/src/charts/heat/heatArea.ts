import type { Counts2d } from "../../model/data";
import { limited, type Span, zoomed } from "../curves";

/** What of a map is looked at, in columns and rows from the edge of the first; null shows all. */
export interface HeatWindow {
  x: Span;
  y: Span;
}
export const wholeMap: HeatWindow = { x: null, y: null };

export interface Size {
  rows: number;
  columns: number;
}

/** Cells from `left` and `top` on, and before `right` and `bottom`. */
export interface Area {
  left: number;
  right: number;
  top: number;
  bottom: number;
}

export interface Cell {
  row: number;
  column: number;
}

/** In columns and rows from the edge of the first. */
export interface Place {
  x: number;
  y: number;
}

type Range = readonly [number, number];
export interface Shown {
  x: Range;
  y: Range;
}

const leastCells = 4;

export function shownOf(window: HeatWindow, size: Size): Shown {
  return {
    x: limited(window.x, 0, size.columns, leastCells) ?? [0, size.columns],
    y: limited(window.y, 0, size.rows, leastCells) ?? [0, size.rows],
  };
}

/** The cells of which something is shown. */
export function areaOf({ x, y }: Shown): Area {
  return { left: Math.floor(x[0]), right: Math.ceil(x[1]), top: Math.floor(y[0]), bottom: Math.ceil(y[1]) };
}

function windowOf(x: Range, y: Range, size: Size): HeatWindow {
  return { x: limited(x, 0, size.columns, leastCells), y: limited(y, 0, size.rows, leastCells) };
}

/** Zoomed about a place by a factor; < 1 shows less. */
export function zoomedWindow(shown: Shown, about: Place, factor: number, size: Size): HeatWindow {
  return windowOf(zoomed(shown.x, about.x, factor), zoomed(shown.y, about.y, factor), size);
}

/** Moved by columns and rows. */
export function movedWindow({ x, y }: Shown, columns: number, rows: number, size: Size): HeatWindow {
  return windowOf([x[0] + columns, x[1] + columns], [y[0] + rows, y[1] + rows], size);
}

/** Moved as little as shows the cell. */
export function windowAround({ row, column }: Cell, shown: Shown, size: Size): HeatWindow {
  const shift = (at: number, [from, to]: Range): number => Math.min(0, at - from) + Math.max(0, at + 1 - to);
  return movedWindow(shown, shift(column, shown.x), shift(row, shown.y), size);
}

/** Whether all of the cell is shown. */
export function isSeen({ row, column }: Cell, { x, y }: Shown): boolean {
  return column >= x[0] && column + 1 <= x[1] && row >= y[0] && row + 1 <= y[1];
}

/** The cell at a place; null outside the map. */
export function cellAt(place: Place, size: Size): Cell | null {
  const cell = { row: Math.floor(place.y), column: Math.floor(place.x) };
  return isWithin(cell, size) ? cell : null;
}

export function isWithin({ row, column }: Cell, { rows, columns }: Size): boolean {
  return row >= 0 && row < rows && column >= 0 && column < columns;
}

export function countAt({ counts, columns }: Counts2d, { row, column }: Cell): number {
  return counts[row * columns + column] ?? 0;
}
