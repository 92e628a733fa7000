import type { Counts2d, PointCloud } from "../../model/data";
import type { Area } from "./heatArea";

/** A line for each row of the area, with the row's and above all the columns' numbers. */
export function csvOfCounts(map: Counts2d, area: Area): string {
  const lines = [["row", ...Array.from({ length: area.right - area.left }, (_, i) => area.left + i)].join(",")];
  for (let row = area.top; row < area.bottom; ++row) {
    const counts = map.counts.subarray(row * map.columns + area.left, row * map.columns + area.right);
    lines.push(`${row},${counts.join(",")}`);
  }
  return `${lines.join("\n")}\n`;
}

/** A line for each point. */
export function csvOfPoints(points: PointCloud, names: readonly [string, string]): string {
  const lines = [names.join(",")];
  for (let i = 0; i < points.x.length; ++i) {
    lines.push(`${points.x[i]},${points.y[i]}`);
  }
  return `${lines.join("\n")}\n`;
}
