import { type Curve, type CurveSet, logFloor } from "./curves";

/** What is drawn: null where there is a gap. */
export type Column = ArrayLike<number> | (number | null)[];

/** The values of each curve, as an axis can show them. */
export function columnsOf({ curves }: CurveSet, isLog: boolean): Column[] {
  return curves.map((curve) => columnOf(curve, isLog));
}

// What isn't above zero has no place on a logarithmic axis: it stands at its foot.
function columnOf({ values, gaps }: Curve, isLog: boolean): Column {
  const raised = (value: number): number => (isLog && !(value > logFloor) ? logFloor : value);
  if (gaps) {
    return Array.from(values, (value) => (Number.isNaN(value) ? null : raised(value)));
  }
  return isLog ? Float64Array.from(values, raised) : values;
}
