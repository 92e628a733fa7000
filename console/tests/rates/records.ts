import type { Rates } from "../../src/server/queries";

/** A record whose rates are its counts over so many seconds. */
export function record(timestamp: number, seconds: number, countsIn: number[], countsOut = countsIn): Rates {
  return {
    timestamp,
    countsIn: Float64Array.from(countsIn),
    countsOut: Float64Array.from(countsOut),
    ratesIn: Float64Array.from(countsIn, (count) => count / seconds),
    ratesOut: Float64Array.from(countsOut, (count) => count / seconds),
  };
}
