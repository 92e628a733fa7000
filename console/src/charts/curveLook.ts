import uPlot from "uplot";
import { short } from "../base/format";
import { type Curve, curveColour, inkColour, tickTexts } from "./curves";
import type { DenseCurves } from "./dense";

// How curves and their axes look.

export interface PlotLook {
  xLabel: string;
  yLabel: string;
  isLog: boolean;
  isDark: boolean;
}

export const plotFont = "12px system-ui, sans-serif";

export function axesOf({ xLabel, yLabel, isDark }: PlotLook): uPlot.Axis[] {
  const grid = { stroke: isDark ? "#2a3038" : "#e3e6ea", width: 1 };
  const fonts = { font: plotFont, labelFont: plotFont, labelSize: 18 };
  const axis = { stroke: inkColour(isDark), grid, ticks: grid, ...fonts };
  // A logarithmic axis has null where there is no room for a number.
  const texts = (_: uPlot, ticks: (number | null)[]): string[] =>
    ticks.map((tick) => (tick === null ? "" : short(tick)));
  return [
    { ...axis, label: xLabel, values: (_, ticks) => tickTexts(ticks) },
    { ...axis, label: yLabel, size: 62, values: texts },
  ];
}

const stepped = uPlot.paths.stepped!({ align: 1 });
const linear = uPlot.paths.linear!();

export function seriesOf(
  { label, colour, dashed = false }: Curve,
  steps: boolean,
  isDark: boolean,
  dense: DenseCurves,
): uPlot.Series {
  return {
    label,
    stroke: curveColour(colour, isDark),
    width: dashed ? 2 : 1.25,
    points: { show: false },
    spanGaps: false,
    ...(dashed ? { dash: [6, 4] } : {}),
    paths: dense.pathsOr(steps ? stepped : linear),
  };
}
