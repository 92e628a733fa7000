import { curveColour } from "../../charts/curves";
import type { Trace } from "../../server/scope";
import { columnsOf } from "./columns";
import type { Picture } from "./draw";
import { type Area, beyond, type Layout, sampleAt, xOf, yOf } from "./layout";
import { keyOf, labelOf } from "./traces";
import type { Vertical } from "./vertical";

/** What is drawn, where, and with what. */
export interface Drawing {
  ctx: CanvasRenderingContext2D;
  picture: Picture;
  layout: Layout;
}

/** A line on the outermost value is seen whole. */
const edge = 2;

/** `place` is the trace's among the analog ones. */
export function drawAnalog(drawing: Drawing, trace: Trace, place: number): void {
  const { ctx, picture, layout } = drawing;
  const band = layout.bands[place]!;
  const vertical = picture.verticalOf(keyOf(trace));
  ctx.strokeStyle = ctx.fillStyle = curveColour(picture.colourOf(trace.channel), picture.isDark);
  ctx.lineWidth = keyOf(trace) === picture.selected ? 2 : 1;
  const y = (value: number): number => yOf(value, band, vertical);
  ctx.save();
  ctx.beginPath();
  ctx.rect(layout.left, band.top - edge, layout.width, band.height + 2 * edge);
  ctx.clip();
  ctx.beginPath();
  tracePath(drawing, trace, y);
  ctx.stroke();
  ctx.restore();
  nameTrace(drawing, trace, place, y);
  markCut(drawing, trace, band, vertical);
}

// What goes on beyond the edge must not look as if it ended there.
function markCut({ ctx, picture, layout }: Drawing, trace: Trace, band: Area, vertical: Vertical): void {
  const { above, below } = beyond(trace.samples, picture.view, vertical);
  const words = keyOf(trace) === picture.selected ? " goes on, F fits" : "";
  ctx.textAlign = "left";
  if (above >= 0) {
    ctx.textBaseline = "top";
    ctx.fillText(`▲${words}`, xOf(above, layout, picture.view) + 6, band.top);
  }
  if (below >= 0) {
    ctx.textBaseline = "bottom";
    ctx.fillText(`▼${words}`, xOf(below, layout, picture.view) + 6, band.top + band.height);
  }
}

const nameWidth = 44;

// Names stand beside each other on their traces: colours alone don't tell traces apart.
function nameTrace(
  { ctx, picture, layout }: Drawing,
  trace: Trace,
  place: number,
  y: (value: number) => number,
): void {
  const band = layout.bands[place]!;
  const column = picture.isStacked ? 0 : place % Math.max(1, Math.floor(layout.width / nameWidth));
  const x = layout.left + 4 + column * nameWidth;
  const value = trace.samples[Math.round(sampleAt(x, layout, picture.view))] ?? 0;
  ctx.textAlign = "left";
  ctx.textBaseline = "bottom";
  ctx.fillText(labelOf(trace), x, Math.min(Math.max(y(value) - 4, band.top + 14), band.top + band.height));
}

// Where samples share pixels, from the least to the greatest of each pixel.
function tracePath({ ctx, picture, layout }: Drawing, { samples }: Trace, y: (value: number) => number): void {
  const first = Math.max(0, Math.floor(picture.view[0]));
  const last = Math.min(samples.length - 1, Math.ceil(picture.view[1]));
  const columns = Math.floor(layout.width);
  if (last - first < 2 * columns) {
    for (let i = first; i <= last; ++i) {
      ctx.lineTo(xOf(i, layout, picture.view), y(samples[i]!));
    }
    return;
  }
  const { low, high } = columnsOf(samples, first, last, columns);
  for (let column = 0; column < columns; ++column) {
    const x = xOf(first + ((column + 0.5) * (last - first + 1)) / columns, layout, picture.view);
    ctx.lineTo(x, y(low[column]!));
    ctx.lineTo(x, y(high[column]!));
  }
}

/** `place` is the trace's among the digital ones. */
export function drawDigital(drawing: Drawing, trace: Trace, place: number): void {
  const { ctx, picture, layout } = drawing;
  const lane = layout.lanes[place]!;
  const y = (value: number): number => lane.top + lane.height * (value > 0.5 ? 0.2 : 0.85);
  ctx.strokeStyle = ctx.fillStyle = curveColour(picture.colourOf(trace.channel), picture.isDark);
  ctx.lineWidth = keyOf(trace) === picture.selected ? 2 : 1;
  ctx.beginPath();
  stepPath(drawing, trace, y);
  ctx.stroke();
}

const textHeight = 12;

/** Names digital traces beside their lanes; where there is no room for that, their channels. */
export function drawLaneNames({ ctx, picture, layout }: Drawing): void {
  ctx.textAlign = "right";
  ctx.textBaseline = "middle";
  let free = 0; // below the last name
  picture.digital.forEach((trace, i) => {
    const lane = layout.lanes[i]!;
    const middle = lane.top + lane.height / 2;
    if (middle - textHeight / 2 >= free && (lane.height >= textHeight || trace.index === 0)) {
      ctx.fillStyle = curveColour(picture.colourOf(trace.channel), picture.isDark);
      ctx.fillText(lane.height >= textHeight ? labelOf(trace) : `Ch ${trace.channel}d`, layout.left - 6, middle);
      free = middle + textHeight / 2;
    }
  });
}

function stepPath({ ctx, picture, layout }: Drawing, { samples }: Trace, y: (value: number) => number): void {
  const first = Math.max(0, Math.floor(picture.view[0]));
  const last = Math.min(samples.length - 1, Math.ceil(picture.view[1]));
  ctx.moveTo(xOf(first, layout, picture.view), y(samples[first] ?? 0));
  for (let i = first + 1; i <= last; ++i) {
    if (samples[i] !== samples[i - 1]) {
      const x = xOf(i, layout, picture.view);
      ctx.lineTo(x, y(samples[i - 1]!));
      ctx.lineTo(x, y(samples[i]!));
    }
  }
  ctx.lineTo(xOf(last, layout, picture.view), y(samples[last] ?? 0));
}
