import type uPlot from "uplot";

// Curves with many values to a pixel. A line through all of them costs the browser ten times what bars of one pixel do,
// and looks the same.

/** Whether so many values are to be drawn so wide that single ones can't be seen. */
export function isDense(values: number, pixels: number): boolean {
  return values >= 1.5 * pixels;
}

/** The values that are seen in one column of pixels; null where there are none. */
export type Extent = readonly [least: number, most: number] | null;

/**
 * The extents of the values from index `from` to `to` in `columns` columns of equal width between the positions `low`
 * and `high`. Neighbours touch: a column reaches to the last value of the one before.
 */
export function extentsOf(
  x: ArrayLike<number>,
  values: ArrayLike<number | null | undefined>,
  [from, to]: readonly [number, number],
  [low, high]: readonly [number, number],
  columns: number,
): Extent[] {
  const extents = new Array<Extent>(columns).fill(null);
  const perColumn = columns / (high - low);
  let before: number | null = null;
  for (let i = from; i <= to; ++i) {
    const value = values[i] ?? null;
    const column = Math.floor((x[i]! - low) * perColumn);
    if (value !== null && column >= 0 && column < columns) {
      const [least, most] = extents[column] ?? [before ?? value, before ?? value];
      extents[column] = [Math.min(least, value), Math.max(most, value)];
    }
    before = value;
  }
  return extents;
}

/** Of ten columns of a dashed curve so many are drawn. */
const dash = 6;

/** Draws a series' values from index `from` to `to` as bars. */
export function drawDense(
  plot: uPlot,
  series: number,
  range: readonly [number, number],
  look: { colour: string; dashed: boolean },
): void {
  const { left, width } = plot.bbox;
  const { min = 0, max = 1 } = plot.scales["x"] ?? {};
  const extents = extentsOf(plot.data[0], plot.data[series]!, range, [min, max], Math.round(width));
  plot.ctx.fillStyle = look.colour;
  extents.forEach((extent, column) => {
    if (extent !== null && !(look.dashed && column % 10 >= dash)) {
      const top = Math.floor(plot.valToPos(extent[1], "y", true));
      const bottom = Math.ceil(plot.valToPos(extent[0], "y", true));
      plot.ctx.fillRect(Math.round(left) + column, top, 1, Math.max(1, bottom - top));
    }
  });
}
