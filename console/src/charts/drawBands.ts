import type uPlot from "uplot";
import { type Band, inkColour } from "./curves";

/** Parts of the axis that stand out, under the curves. */
export function drawBands(plot: uPlot, bands: readonly Band[], isDark: boolean): void {
  const { ctx, bbox } = plot;
  ctx.save();
  ctx.beginPath();
  ctx.rect(bbox.left, bbox.top, bbox.width, bbox.height);
  ctx.clip();
  for (const band of bands) {
    const [left, right] = [plot.valToPos(band.from, "x", true), plot.valToPos(band.to, "x", true)];
    ctx.fillStyle = band.selected ? "rgba(90, 140, 220, 0.28)" : "rgba(130, 140, 155, 0.18)";
    ctx.fillRect(left, bbox.top, Math.max(1, right - left), bbox.height);
    ctx.fillStyle = inkColour(isDark);
    ctx.textAlign = "left";
    ctx.font = `${12 * devicePixelRatio}px system-ui, sans-serif`;
    ctx.fillText(band.label, left + 4, bbox.top + 14 * devicePixelRatio);
  }
  ctx.restore();
}
