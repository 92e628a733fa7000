/** Counts of one channel, by bin. */
export interface Histogram {
  channel: number;
  counts: Uint32Array;
}

/** Counts by row and column, row by row. */
export interface Counts2d {
  rows: number;
  columns: number;
  counts: Uint32Array;
}

/** Points by their coordinates. */
export interface PointCloud {
  x: Float64Array;
  y: Float64Array;
}
