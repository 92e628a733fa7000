import { short } from "../../base/format";
import { tableSize } from "../colourTables";
import { axisTicks } from "./heatAxis";
import type { HeatLayout, Rect } from "./heatLayout";
import type { HeatInk, HeatPicture } from "./heatPicture";
import { type HeatScale, shareOf } from "./heatScale";
import type { Placement } from "./placement";
import { logTicks, roundTicks } from "./ticks";

type Context = CanvasRenderingContext2D;

const font = "12px system-ui, sans-serif";
const tick = 4;

type Align = readonly [across: CanvasTextAlign, down: CanvasTextBaseline];

function text(ctx: Context, words: string, x: number, y: number, align: Align): void {
  [ctx.textAlign, ctx.textBaseline] = align;
  ctx.fillText(words, x, y);
}

/** The map's edge and both axes. */
export function drawAxes(ctx: Context, picture: HeatPicture, place: Placement, ink: HeatInk): void {
  const { left, top, width, height } = place.rect;
  const { x, y } = place.shown;
  ctx.strokeStyle = ink.faint;
  ctx.fillStyle = ink.ink;
  ctx.font = font;
  ctx.lineWidth = 1;
  ctx.strokeRect(left - 0.5, top - 0.5, width + 1, height + 1);
  for (const { at, text: words } of axisTicks(picture.xAxis, x[0], x[1], width / 60)) {
    ctx.fillRect(Math.round(place.xOf(at)), top + height, 1, tick);
    text(ctx, words, place.xOf(at), top + height + tick + 2, ["center", "top"]);
  }
  for (const { at, text: words } of axisTicks(picture.yAxis, y[0], y[1], height / 36)) {
    ctx.fillRect(left - tick, Math.round(place.yOf(at)), tick, 1);
    text(ctx, words, left - tick - 3, place.yOf(at), ["right", "middle"]);
  }
  text(ctx, picture.xAxis.label, left + width / 2, top + height + 22, ["center", "top"]);
  ctx.save();
  ctx.translate(left - 48, top + height / 2);
  ctx.rotate(-Math.PI / 2);
  text(ctx, picture.yAxis.label, 0, 0, ["center", "middle"]);
  ctx.restore();
}

/** The colours with what they stand for, and how empty cells look. */
export function drawColourBar(
  ctx: Context,
  { scale, table }: HeatPicture,
  bar: Rect,
  ink: HeatInk,
  empty: CanvasPattern,
): void {
  const bottom = bar.top + bar.height;
  table.css.forEach((colour, i) => {
    ctx.fillStyle = colour;
    const [from, to] = [bottom - (i / tableSize) * bar.height, bottom - ((i + 1) / tableSize) * bar.height];
    ctx.fillRect(bar.left, Math.floor(to), bar.width, Math.ceil(from) - Math.floor(to));
  });
  ctx.strokeStyle = ink.faint;
  ctx.strokeRect(bar.left - 0.5, bar.top - 0.5, bar.width + 1, bar.height + 1);
  ctx.font = font;
  ctx.fillStyle = ink.ink;
  for (const value of barTicks(scale, bar.height / 30)) {
    const y = bottom - shareOf(value, scale) * bar.height;
    ctx.fillRect(bar.left + bar.width, Math.round(y), tick, 1);
    text(ctx, short(value), bar.left + bar.width + tick + 3, y, ["left", "middle"]);
  }
  text(ctx, "empty", bar.left + bar.width + tick + 3, bottom + 22, ["left", "middle"]);
  ctx.fillStyle = empty;
  ctx.fillRect(bar.left, bottom + 15, bar.width, 14);
  ctx.strokeRect(bar.left - 0.5, bottom + 14.5, bar.width + 1, 15);
}

function barTicks({ low, high, isLog }: HeatScale, count: number): number[] {
  return isLog ? logTicks(low, high, count) : roundTicks(low, high, count);
}

/** The sums of the columns above the map and of the rows beside it, each from 0 to its largest. */
export function drawSums(
  ctx: Context,
  { summary }: HeatPicture,
  place: Placement,
  { above, beside }: HeatLayout,
  ink: HeatInk,
): void {
  const { area, columns, rows } = summary;
  if (above !== null) {
    const height = (share: number): number => above.top + (1 - share) * above.height;
    drawSteps(ctx, columns, above, ink, (cells, share) => [place.xOf(area.left + cells), height(share)]);
    drawLargest(ctx, columns, above.left + above.width + tick, above.top, "left", ink);
  }
  if (beside !== null) {
    const width = (share: number): number => beside.left + share * beside.width;
    drawSteps(ctx, rows, beside, ink, (cells, share) => [width(share), place.yOf(area.top + cells)]);
    drawLargest(ctx, rows, beside.left + beside.width, beside.top + beside.height + 6, "right", ink);
  }
}

type Along = (cells: number, share: number) => [number, number];

function drawSteps(ctx: Context, sums: Float64Array, rect: Rect, ink: HeatInk, along: Along): void {
  const most = largest(sums);
  ctx.save();
  ctx.beginPath();
  ctx.rect(rect.left, rect.top, rect.width, rect.height);
  ctx.clip();
  ctx.beginPath();
  ctx.moveTo(...along(0, 0));
  sums.forEach((sum, i) => {
    const share = most > 0 ? sum / most : 0;
    ctx.lineTo(...along(i, share));
    ctx.lineTo(...along(i + 1, share));
  });
  ctx.lineTo(...along(sums.length, 0));
  ctx.fillStyle = ink.sums;
  ctx.fill();
  ctx.restore();
  ctx.strokeStyle = ink.faint;
  ctx.strokeRect(rect.left - 0.5, rect.top - 0.5, rect.width + 1, rect.height + 1);
}

function drawLargest(
  ctx: Context,
  sums: Float64Array,
  x: number,
  y: number,
  across: CanvasTextAlign,
  ink: HeatInk,
): void {
  ctx.font = font;
  ctx.fillStyle = ink.ink;
  text(ctx, `${short(largest(sums))} max`, x, y, [across, "top"]);
}

function largest(sums: Float64Array): number {
  return sums.reduce((most, sum) => Math.max(most, sum), 0);
}
