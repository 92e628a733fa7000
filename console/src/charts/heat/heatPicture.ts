import type { Counts2d, PointCloud } from "../../model/data";
import type { ColourTable } from "../colourTables";
import type { Shown } from "./heatArea";
import type { HeatAxis } from "./heatAxis";
import type { HeatScale } from "./heatScale";
import type { Summary } from "./summary";

/** All that a picture shows. */
export interface HeatPicture {
  map: Counts2d;
  /** Drawn in place of the cells: x in columns, y as the vertical axis has it. */
  points: PointCloud | null;
  scale: HeatScale;
  table: ColourTable;
  shown: Shown;
  /** Of what is shown. */
  summary: Summary;
  xAxis: HeatAxis;
  yAxis: HeatAxis;
  /** Rows rise from the bottom; else they go down from the top. */
  isUpward: boolean;
  /** Cells are squares. */
  isSquare: boolean;
}

export interface HeatInk {
  ground: string;
  ink: string;
  faint: string;
  /** Of cells without counts, which are hatched. */
  empty: string;
  hatch: string;
  sums: string;
  point: string;
}

const light: HeatInk = {
  ground: "#ffffff",
  ink: "#444c56",
  faint: "#aeb5bd",
  empty: "#ffffff",
  hatch: "#e4e7eb",
  sums: "#0072b2",
  point: "#0b5cad",
};
const dark: HeatInk = {
  ground: "#181d23",
  ink: "#b8c0cc",
  faint: "#4a535e",
  empty: "#0d1013",
  hatch: "#20262d",
  sums: "#56b4e9",
  point: "#7cc7ff",
};

export function heatInk(isDark: boolean): HeatInk {
  return isDark ? dark : light;
}
