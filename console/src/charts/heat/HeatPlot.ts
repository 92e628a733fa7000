import { drawAxes, drawColourBar, drawSums } from "./drawFrame";
import { CellImage, drawPoints, emptyPattern } from "./drawMap";
import {
  type Cell,
  cellAt,
  type HeatWindow,
  isSeen,
  movedWindow,
  shownOf,
  wholeMap,
  windowAround,
  zoomedWindow,
} from "./heatArea";
import { listenToGestures, type Point } from "./heatGestures";
import { type HeatLayout, layoutOf } from "./heatLayout";
import { type HeatInk, heatInk, type HeatPicture } from "./heatPicture";
import { Placement } from "./placement";

export interface HeatEvents {
  /** The operator chose what to look at. */
  onWindow: (window: HeatWindow) => void;
  /** The cell under the mouse; null when it left. */
  onCell: (cell: Cell | null) => void;
}

/** A map in a canvas with axes, sums and a colour bar; follows mouse, fingers and the size of its place. */
export class HeatPlot {
  readonly canvas = document.createElement("canvas");
  private readonly mark = document.createElement("div");
  private readonly cells = new CellImage();
  private readonly watcher = new ResizeObserver(() => this.schedule());
  private picture: HeatPicture | null = null;
  private placement: Placement | null = null;
  private isDark = false;
  private marked: Cell | null = null;
  private frame = 0;

  constructor(
    private readonly place: HTMLElement,
    private readonly events: HeatEvents,
  ) {
    this.mark.className = "heat-mark";
    place.append(this.canvas, this.mark);
    this.watcher.observe(place);
    listenToGestures(place, {
      onPoint: (at) => this.events.onCell(at === null ? null : this.cellAt(at)),
      onMove: (width, height) => this.drag(width, height),
      onZoom: (about, factor) => this.zoomAt(about, factor),
      onWhole: () => this.choose(wholeMap),
    });
  }

  destroy(): void {
    this.watcher.disconnect();
    cancelAnimationFrame(this.frame);
    this.canvas.remove();
    this.mark.remove();
  }

  show(picture: HeatPicture, isDark: boolean): void {
    this.picture = picture;
    this.isDark = isDark;
    this.schedule();
  }

  /** Marks a cell; null none. */
  point(cell: Cell | null): void {
    this.marked = cell;
    this.putMark();
  }

  /** Zooms about a cell, or else about the middle. */
  zoom(factor: number, cell: Cell | null): void {
    const { shown, map } = this.picture!;
    const middle = { x: (shown.x[0] + shown.x[1]) / 2, y: (shown.y[0] + shown.y[1]) / 2 };
    const about = cell === null ? middle : { x: cell.column + 0.5, y: cell.row + 0.5 };
    this.choose(zoomedWindow(shown, about, factor, map));
  }

  /** Moves by parts of what is shown, to the right and down as the picture has it. */
  move(right: number, down: number): void {
    this.drag(-right * (this.placement?.rect.width ?? 0), -down * (this.placement?.rect.height ?? 0));
  }

  whole(): void {
    this.choose(wholeMap);
  }

  /** Moves as little as shows the cell. */
  reveal(cell: Cell): void {
    const { shown, map } = this.picture!;
    if (!isSeen(cell, shown)) {
      this.choose(windowAround(cell, shown, map));
    }
  }

  private cellAt(at: Point): Cell | null {
    const isInside = this.picture !== null && this.placement?.holds(at.x, at.y) === true;
    return isInside ? cellAt(this.placement!.placeOf(at.x, at.y), this.picture!.map) : null;
  }

  private drag(width: number, height: number): void {
    if (this.placement !== null && this.picture !== null) {
      const { columns, rows } = this.placement.cellsOf(width, height);
      this.choose(movedWindow(this.picture.shown, -columns, -rows, this.picture.map));
    }
  }

  private zoomAt(at: Point, factor: number): void {
    if (this.placement !== null && this.picture !== null) {
      this.choose(zoomedWindow(this.picture.shown, this.placement.placeOf(at.x, at.y), factor, this.picture.map));
    }
  }

  // What is done before the next picture starts from here.
  private choose(window: HeatWindow): void {
    const picture = this.picture!;
    const shown = shownOf(window, picture.map);
    this.picture = { ...picture, shown };
    this.placement = this.placement && new Placement(this.placement.rect, shown, picture.isUpward);
    this.events.onWindow(window);
  }

  private schedule(): void {
    cancelAnimationFrame(this.frame);
    this.frame = requestAnimationFrame(() => this.draw());
  }

  private draw(): void {
    const { width, height } = this.place.getBoundingClientRect();
    const picture = this.picture;
    if (picture === null || width < 1 || height < 1) {
      return;
    }
    const { x, y } = picture.shown;
    const aspect = picture.isSquare ? (x[1] - x[0]) / (y[1] - y[0]) : null;
    const layout = layoutOf(width, height, aspect, picture.points === null);
    this.placement = new Placement(layout.map, picture.shown, picture.isUpward);
    this.fit(width, height);
    const ctx = this.canvas.getContext("2d")!;
    const ink = heatInk(this.isDark);
    const empty = emptyPattern(ctx, ink, devicePixelRatio);
    ctx.setTransform(devicePixelRatio, 0, 0, devicePixelRatio, 0, 0);
    ctx.fillStyle = ink.ground;
    ctx.fillRect(0, 0, width, height);
    this.drawMap(ctx, picture, layout, empty, ink);
    drawAxes(ctx, picture, this.placement, ink);
    drawSums(ctx, picture, this.placement, layout, ink);
    if (layout.bar !== null) {
      drawColourBar(ctx, picture, layout.bar, ink, empty);
    }
    this.putMark();
  }

  private drawMap(
    ctx: CanvasRenderingContext2D,
    picture: HeatPicture,
    layout: HeatLayout,
    empty: CanvasPattern,
    ink: HeatInk,
  ): void {
    ctx.save();
    ctx.beginPath();
    ctx.rect(layout.map.left, layout.map.top, layout.map.width, layout.map.height);
    ctx.clip();
    ctx.fillStyle = picture.points === null ? empty : ink.empty;
    ctx.fill();
    if (picture.points === null) {
      this.cells.draw(ctx, picture, this.placement!, devicePixelRatio);
    } else {
      drawPoints(ctx, picture, this.placement!, ink);
    }
    ctx.restore();
  }

  private fit(width: number, height: number): void {
    const [across, down] = [Math.round(width * devicePixelRatio), Math.round(height * devicePixelRatio)];
    if (this.canvas.width !== across || this.canvas.height !== down) {
      this.canvas.width = across;
      this.canvas.height = down;
    }
  }

  private putMark(): void {
    const rect = this.marked === null ? null : (this.placement?.rectOf(this.marked) ?? null);
    const middle = rect && { x: rect.left + rect.width / 2, y: rect.top + rect.height / 2 };
    const isInside = middle !== null && this.placement!.holds(middle.x, middle.y);
    this.mark.hidden = !isInside;
    if (rect !== null && isInside) {
      const [width, height] = [Math.max(5, rect.width), Math.max(5, rect.height)];
      this.mark.style.left = `${rect.left + (rect.width - width) / 2}px`;
      this.mark.style.top = `${rect.top + (rect.height - height) / 2}px`;
      this.mark.style.width = `${width}px`;
      this.mark.style.height = `${height}px`;
    }
  }
}
