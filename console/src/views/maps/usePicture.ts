import { useMemo } from "preact/hooks";
import { parameter } from "../../app/route";
import { areaOf, type HeatWindow, shownOf } from "../../charts/heat/heatArea";
import type { HeatAxis } from "../../charts/heat/heatAxis";
import type { HeatPicture } from "../../charts/heat/heatPicture";
import { automaticScale, fixedScale } from "../../charts/heat/heatScale";
import { summaryOf } from "../../charts/heat/summary";
import type { Counts2d, PointCloud } from "../../model/data";
import { useKept } from "../common/useKept";
import { fixedScaleOf, tableNamed, textOf, windowOf } from "./mapSettings";
import { isLogChosen } from "./ScaleControls";

/** What a map is drawn from. */
export interface MapSubject {
  map: Counts2d;
  /** Shown in place of the map's cells; the map counts them. */
  points: PointCloud | null;
  xAxis: HeatAxis;
  yAxis: HeatAxis;
  /** Where row 0 is when the operator didn't choose. */
  startsAtBottom: boolean;
  isSquare: boolean;
}

export function isUpwardChosen(startsAtBottom: boolean): boolean {
  return (parameter("rows") ?? (startsAtBottom ? "up" : "down")) === "up";
}

/** The picture as the operator chose it. */
export function usePicture(subject: MapSubject): [HeatPicture, (window: HeatWindow) => void] {
  const { map, points, xAxis, yAxis, startsAtBottom, isSquare } = subject;
  const [at, setAt] = useKept("at");
  const range = parameter("range");
  const isLog = isLogChosen();
  const table = tableNamed(parameter("colours"));
  const isUpward = isUpwardChosen(startsAtBottom);
  const shown = useMemo(() => shownOf(windowOf(at), map), [at, map]);
  const summary = useMemo(() => summaryOf(map, areaOf(shown)), [map, shown]);
  const picture = useMemo(() => {
    const fixed = fixedScaleOf(range);
    const isFixed = fixed !== null && fixed.fault === null;
    const scale = isFixed ? fixedScale(fixed.low, fixed.high, isLog) : automaticScale(summary, isLog);
    return { map, points, scale, table, shown, summary, xAxis, yAxis, isUpward, isSquare };
  }, [summary, points, range, isLog, table, isUpward, isSquare, ...valuesOf(xAxis), ...valuesOf(yAxis)]);
  return [picture, (window) => setAt(textOf(window))];
}

function valuesOf({ label, cellsPerUnit, zero }: HeatAxis): (string | number)[] {
  return [label, cellsPerUnit, zero];
}
