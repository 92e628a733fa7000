import type uPlot from "uplot";
import { type CurveSet, curveColour, indexAt, inkColour } from "./curves";
import { plotFont } from "./curveLook";

/** Where a curve is named, and how wide its name is; in pixels. */
export interface Anchor {
  x: number;
  y: number;
  width: number;
}

interface Point {
  x: number;
  y: number;
}

export interface Area {
  left: number;
  top: number;
  width: number;
  height: number;
}

/** Where the middle of each name's left edge stands: beside its anchor, and none over another. */
export function placeLabels(anchors: readonly Anchor[], area: Area, lineHeight: number): Point[] {
  const placed: Anchor[] = [];
  const right = area.left + area.width;
  const [first, last] = [area.top + lineHeight / 2, area.top + area.height - lineHeight / 2];
  for (const { x, y: height, width } of anchors) {
    const left = x + lineHeight + width <= right ? x + lineHeight : Math.max(area.left, x - lineHeight - width);
    const isFree = (line: number): boolean =>
      placed.every((other) => Math.abs(other.y - line) >= lineHeight || !overlap(other, { x: left, width }));
    const beside = Math.min(Math.max(height, first), last);
    const tried = linesAround(beside, lineHeight, 2 * Math.ceil(area.height / lineHeight));
    const y = tried.find((line) => line >= first && line <= last && isFree(line)) ?? beside;
    placed.push({ x: left, y, width });
  }
  return placed.map(({ x, y }) => ({ x, y }));
}

type Width = Pick<Anchor, "x" | "width">;

function overlap(a: Width, b: Width): boolean {
  return a.x < b.x + b.width && b.x < a.x + a.width;
}

/** This one, the one above, the one below, two above ... */
function linesAround(line: number, lineHeight: number, count: number): number[] {
  return Array.from({ length: count }, (_, i) => line + Math.ceil(i / 2) * (i % 2 === 0 ? 1 : -1) * lineHeight);
}

/**
 * The index of the last of the greatest values from one to another. `before` stays while it is nearly that: names
 * that jump with every new count can't be read.
 */
export function namedAt(values: ArrayLike<number>, from: number, to: number, before: number | undefined): number {
  let [top, most] = [from, -Infinity];
  for (let i = from; i <= to; ++i) {
    if (values[i]! >= most) {
      [top, most] = [i, values[i]!];
    }
  }
  const isNear = before !== undefined && before >= from && before <= to && values[before]! >= 0.8 * most;
  return isNear ? before : top;
}

/** Names curves that are shown together at their greatest value in sight: colours alone don't tell all eyes. */
export class CurveLabels {
  private readonly at = new Map<string, number>();

  draw(plot: uPlot, { x, curves }: CurveSet, shown: readonly [number, number], isDark: boolean): void {
    const [from, to] = [Math.max(0, indexAt(x, shown[0])), indexAt(x, shown[1])];
    if (curves.length < 2 || to < from) {
      return;
    }
    const { ctx, bbox } = plot;
    const scale = devicePixelRatio;
    ctx.save();
    ctx.font = plotFont.replace("12", String(12 * scale));
    ctx.textBaseline = "middle";
    ctx.textAlign = "left";
    const anchors = curves.map(({ label, values }) => {
      const index = namedAt(values, from, to, this.at.get(label));
      this.at.set(label, index);
      return { ...pointOf(plot, x[index]!, values[index]!), width: ctx.measureText(label).width };
    });
    placeLabels(anchors, bbox, 14 * scale).forEach((place, i) => {
      const { label, colour } = curves[i]!;
      drawLabel(ctx, label, anchors[i]!, place, curveColour(colour, isDark), isDark);
    });
    ctx.restore();
  }
}

/** In the canvas, within the plot. */
function pointOf(plot: uPlot, x: number, y: number): Point {
  const { left, top, width, height } = plot.bbox;
  const [at, up] = [plot.valToPos(x, "x", true), plot.valToPos(y, "y", true)];
  return {
    x: Math.min(Math.max(at, left), left + width),
    y: Number.isFinite(up) ? Math.min(Math.max(up, top), top + height) : top + height,
  };
}

/** The name, and a line in the curve's colour to where it is. */
function drawLabel(
  context: CanvasRenderingContext2D,
  label: string,
  anchor: Anchor,
  place: Point,
  colour: string,
  isDark: boolean,
): void {
  const isRight = place.x > anchor.x;
  context.strokeStyle = colour;
  context.lineWidth = 2 * devicePixelRatio;
  context.setLineDash([]);
  context.beginPath();
  context.moveTo(anchor.x, anchor.y);
  context.lineTo(isRight ? place.x - 2 : place.x + anchor.width + 2, place.y);
  context.stroke();
  context.strokeStyle = isDark ? "#181d23" : "#ffffff";
  context.lineWidth = 4 * devicePixelRatio;
  context.lineJoin = "round";
  context.strokeText(label, place.x, place.y);
  context.fillStyle = inkColour(isDark);
  context.fillText(label, place.x, place.y);
}
