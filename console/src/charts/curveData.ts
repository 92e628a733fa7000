import { type Curve, type CurveSet, logFloor } from "./curves";

/** What is drawn: null where there is a gap. */
export type Column = ArrayLike<number> | (number | null)[];

/** The values of each curve, as an axis can show them. */
export function columnsOf({ curves }: CurveSet, isLog: boolean): Column[] {
  return curves.map((curve) => columnOf(curve, isLog));
}

// What isn't above zero has no place on a logarithmic axis: it stands at its foot.
function columnOf({ values, gaps }: Curve, isLog: boolean): Column {
  if (gaps) {
    const low = isLog ? logFloor : -Infinity;
    return Array.from(values, (value) => (Number.isNaN(value) ? null : Math.max(value, low)));
  }
  return isLog ? raised(values) : values;
}

// A plain loop: this is done for all bins at each answer.
function raised(values: ArrayLike<number>): Float64Array {
  const result = new Float64Array(values.length);
  for (let i = 0; i < values.length; ++i) {
    result[i] = values[i]! > logFloor ? values[i]! : logFloor;
  }
  return result;
}
