import { short } from "../../base/format";
import type { Trace } from "../../server/scope";
import { drawAnalog, drawDigital, drawLaneNames, type Drawing } from "./drawTraces";
import { type Layout, layoutOf, type View, xOf, yOf } from "./layout";
import { ticksOf, unitFor } from "./timeAxis";
import { keyOf } from "./traces";
import { divisions, type Vertical } from "./vertical";

/** All that is on the screen. */
export interface Picture {
  analog: readonly Trace[];
  digital: readonly Trace[];
  verticalOf: (key: string) => Vertical;
  /** Which of the colours of curves a channel has. */
  colourOf: (channel: number) => number;
  view: View;
  /** Samples; null where there is none. */
  cursor: number | null;
  mark: number | null;
  /** -1 where it didn't trigger. */
  crossing: number;
  /** The key of the trace that stands out and whose values stand beside the lines. */
  selected: string;
  isStacked: boolean;
  nsPerSample: number | null;
  isDark: boolean;
}

interface Ink {
  text: string;
  grid: string;
  cursor: string;
}
const inks: Record<"light" | "dark", Ink> = {
  light: { text: "#444c56", grid: "#e3e6ea", cursor: "#1c2128" },
  dark: { text: "#b8c0cc", grid: "#2a3038", cursor: "#e4e8ed" },
};

export function layoutFor(picture: Picture, width: number, height: number): Layout {
  return layoutOf(width, height, picture.analog.length, picture.digital.length, picture.isStacked);
}

/** Draws over all of a canvas of this size, in the pixels of the page. */
export function draw(ctx: CanvasRenderingContext2D, picture: Picture, width: number, height: number): void {
  const layout = layoutFor(picture, width, height);
  const drawing: Drawing = { ctx, picture, layout };
  const ink = inks[picture.isDark ? "dark" : "light"];
  ctx.clearRect(0, 0, width, height);
  ctx.font = "12px system-ui, sans-serif";
  drawGrid(drawing, ink);
  drawTimes(drawing, ink);
  ctx.save();
  ctx.beginPath();
  ctx.rect(layout.left, 0, layout.width, layout.bottom);
  ctx.clip();
  picture.analog.forEach((trace, i) => drawAnalog(drawing, trace, i));
  picture.digital.forEach((trace, i) => drawDigital(drawing, trace, i));
  ctx.restore();
  drawLaneNames(drawing);
  drawLine(drawing, picture.cursor, ink.cursor, "");
  drawLine(drawing, picture.mark, ink.cursor, "M");
  drawLine(drawing, picture.crossing < 0 ? null : picture.crossing, ink.text, "T");
}

// Traces that share the screen share its lines, whose values are those of the selected one.
function drawGrid({ ctx, picture, layout }: Drawing, ink: Ink): void {
  const bands = picture.isStacked ? layout.bands : layout.bands.slice(0, 1);
  const selected = picture.analog.findIndex((trace) => keyOf(trace) === picture.selected);
  ctx.strokeStyle = ink.grid;
  ctx.fillStyle = ink.text;
  ctx.lineWidth = 1;
  ctx.textAlign = "right";
  ctx.textBaseline = "middle";
  bands.forEach((band, i) => {
    const trace = picture.analog[picture.isStacked ? i : Math.max(0, selected)]!;
    const vertical = picture.verticalOf(keyOf(trace));
    const step = band.height > 20 * divisions ? 1 : divisions / 2;
    for (let line = -divisions / 2; line <= divisions / 2; line += step) {
      const value = vertical.offset + line * vertical.perDivision;
      const y = yOf(value, band, vertical);
      strokeLine(ctx, layout.left, y, layout.left + layout.width, y);
      if (band.height > 60 || line === 0) {
        ctx.fillText(short(value), layout.left - 6, y);
      }
    }
  });
}

function drawTimes({ ctx, picture, layout }: Drawing, ink: Ink): void {
  const [from, to] = picture.view;
  const unit = unitFor(to - from, picture.nsPerSample);
  ctx.strokeStyle = ink.grid;
  ctx.fillStyle = ink.text;
  ctx.textAlign = "center";
  ctx.textBaseline = "top";
  for (const { at, text } of ticksOf(from, to, unit, layout.width / 90)) {
    const x = xOf(at, layout, picture.view);
    strokeLine(ctx, x, 0, x, layout.bottom);
    ctx.fillText(text, x, layout.bottom + 4);
  }
  const label = picture.nsPerSample === null ? unit.name : `time / ${unit.name}`;
  ctx.fillText(label, layout.left + layout.width / 2, layout.bottom + 19);
}

function drawLine(drawing: Drawing, sample: number | null, colour: string, label: string): void {
  const { ctx, picture, layout } = drawing;
  const isSeen = sample !== null && sample >= picture.view[0] && sample <= picture.view[1];
  if (isSeen) {
    const x = xOf(sample, layout, picture.view);
    ctx.strokeStyle = ctx.fillStyle = colour;
    ctx.lineWidth = 1;
    ctx.setLineDash(label === "" ? [] : [4, 4]);
    strokeLine(ctx, x, 0, x, layout.bottom);
    ctx.setLineDash([]);
    ctx.textAlign = "left";
    ctx.textBaseline = "top";
    ctx.fillText(label, x + 3, 1);
  }
}

function strokeLine(ctx: CanvasRenderingContext2D, x1: number, y1: number, x2: number, y2: number): void {
  ctx.beginPath();
  ctx.moveTo(x1, y1);
  ctx.lineTo(x2, y2);
  ctx.stroke();
}

