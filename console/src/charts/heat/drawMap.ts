import type { Area } from "./heatArea";
import type { HeatInk, HeatPicture } from "./heatPicture";
import { pixelOf } from "./heatScale";
import { grown, joinFor, paint } from "./paint";
import type { Placement } from "./placement";

type Context = CanvasRenderingContext2D;

/** The counts as a small picture, a pixel a cell; made anew only when its size changes. */
export class CellImage {
  private readonly canvas = document.createElement("canvas");
  private image: ImageData | null = null;

  /** Paints what is shown and puts it into its place, `density` pixels of the screen to one of the context. */
  draw(ctx: Context, picture: HeatPicture, place: Placement, density: number): void {
    const { area } = picture.summary;
    const join = joinFor(area, place.rect.width * density, place.rect.height * density);
    const painted = grown(area, join);
    const width = (painted.right - painted.left) / join.columns;
    const height = (painted.bottom - painted.top) / join.rows;
    if (width < 1 || height < 1) {
      return;
    }
    const image = this.sized(width, height);
    const pixels = new Uint32Array(image.data.buffer);
    paint(picture.map, painted, join, pixelOf(picture.scale, picture.table), pixels);
    this.canvas.getContext("2d")!.putImageData(image, 0, 0);
    put(this.canvas, ctx, painted, picture.isUpward, place);
  }

  private sized(width: number, height: number): ImageData {
    if (this.image === null || this.image.width !== width || this.image.height !== height) {
      this.canvas.width = width;
      this.canvas.height = height;
      this.image = new ImageData(width, height);
    }
    return this.image;
  }
}

function put(cells: HTMLCanvasElement, ctx: Context, painted: Area, isUpward: boolean, place: Placement): void {
  const { left, top, width, height } = place.rectOf(
    { column: painted.left, row: painted.top },
    painted.right - painted.left,
    painted.bottom - painted.top,
  );
  ctx.imageSmoothingEnabled = false;
  ctx.translate(left, isUpward ? top + height : top);
  ctx.scale(1, isUpward ? -1 : 1);
  ctx.drawImage(cells, 0, 0, width, height);
}

const pointSize = 2.5;
const golden = 0.6180339887498949;

/** A dot for each point. Those of a column are spread evenly over its width: all have the same x. */
export function drawPoints(ctx: Context, { points, yAxis }: HeatPicture, place: Placement, ink: HeatInk): void {
  ctx.fillStyle = ink.point;
  ctx.globalAlpha = 0.7;
  const { x, y } = points!;
  for (let i = 0; i < x.length; ++i) {
    const across = place.xOf(x[i]! + 0.08 + 0.84 * ((i * golden) % 1));
    const down = place.yOf(y[i]! * yAxis.cellsPerUnit + yAxis.zero);
    ctx.fillRect(across - pointSize / 2, down - pointSize / 2, pointSize, pointSize);
  }
}

/** What shows through where nothing was counted. */
export function emptyPattern(ctx: Context, ink: HeatInk, density: number): CanvasPattern {
  const size = Math.round(6 * density);
  const tile = document.createElement("canvas");
  tile.width = tile.height = size;
  const draw = tile.getContext("2d")!;
  draw.fillStyle = ink.empty;
  draw.fillRect(0, 0, size, size);
  draw.strokeStyle = ink.hatch;
  draw.lineWidth = density;
  draw.beginPath();
  for (const shift of [-size, 0, size]) {
    draw.moveTo(shift, size);
    draw.lineTo(shift + size, 0);
  }
  draw.stroke();
  const pattern = ctx.createPattern(tile, "repeat")!;
  pattern.setTransform(new DOMMatrix().scale(1 / density));
  return pattern;
}
