/** The least and the greatest sample of each column of pixels. */
export interface Columns {
  low: Float64Array;
  high: Float64Array;
}

/** Samples `first` to `last` in equal columns, of which there must not be more than samples. */
export function columnsOf(samples: Float64Array, first: number, last: number, count: number): Columns {
  const low = new Float64Array(count).fill(Infinity);
  const high = new Float64Array(count).fill(-Infinity);
  const scale = count / (last - first + 1);
  for (let i = first; i <= last; ++i) {
    const column = Math.min(count - 1, Math.floor((i - first) * scale));
    const value = samples[i]!;
    low[column] = Math.min(low[column]!, value);
    high[column] = Math.max(high[column]!, value);
  }
  return { low, high };
}
