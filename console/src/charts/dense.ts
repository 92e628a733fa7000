import type uPlot from "uplot";

// Curves with many values to a pixel. A line through all of them costs the browser several times what bars of one
// pixel do, and looks the same.

/** Whether so many values are to be drawn so wide that single ones can't be seen. */
export function isDense(values: number, pixels: number): boolean {
  return values >= 1.5 * pixels;
}

/** The values that are seen in one column of pixels; null where there are none. */
export type Extent = readonly [least: number, most: number] | null;

/**
 * The extents of the values from index `from` to `to` in `columns` columns of equal width between the positions
 * `low` and `high`. Neighbours touch: a column reaches to the last value of the one before.
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
function drawBars(plot: uPlot, series: number, range: readonly [number, number], isDashed: boolean): void {
  const { left, width } = plot.bbox;
  const { min, max } = plot.scales["x"]!;
  const extents = extentsOf(plot.data[0], plot.data[series]!, range, [min!, max!], Math.round(width));
  extents.forEach((extent, column) => {
    if (extent !== null && !(isDashed && column % 10 >= dash)) {
      const top = Math.floor(plot.valToPos(extent[1], "y", true));
      const bottom = Math.ceil(plot.valToPos(extent[0], "y", true));
      plot.ctx.fillRect(Math.round(left) + column, top, 1, Math.max(1, bottom - top));
    }
  });
}

/** Draws the curves of a plot, where they are dense, in place of its lines. */
export class DenseCurves {
  private readonly ranges = new Map<number, readonly [number, number]>();

  /** A way to draw a series: lines unless they are dense. */
  readonly pathsOr =
    (lines: uPlot.Series.PathBuilder): uPlot.Series.PathBuilder =>
    (plot, series, from, to) => {
      if (isDense(to - from, plot.bbox.width)) {
        this.ranges.set(series, [from, to]);
        return null;
      }
      this.ranges.delete(series);
      return lines(plot, series, from, to);
    };

  /** To be called when the lines of the series would have been drawn. */
  draw(plot: uPlot, series: number, colour: string, isDashed: boolean): void {
    const range = this.ranges.get(series);
    if (range !== undefined) {
      plot.ctx.fillStyle = colour;
      drawBars(plot, series, range, isDashed);
    }
  }
}
