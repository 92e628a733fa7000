import uPlot from "uplot";
import "uplot/dist/uPlot.min.css";
import { CurveCursor } from "./CurveCursor";
import { columnsOf } from "./curveData";
import { listenToCurveGestures } from "./curveGestures";
import { CurveLabels } from "./curveLabels";
import { axesOf, type PlotLook, seriesOf } from "./curveLook";
import {
  type Band, centreAt, curveColour, type CurveSet, extent, indexAt, limited, type Span, valueRange, zoomed,
} from "./curves";
import { DenseCurves } from "./dense";
import { drawBands } from "./drawBands";

export interface PlotEvents {
  /** The operator chose what to look at. */
  onSpan: (span: Span) => void;
  /** The position under the cursor; null when it left. */
  onCursor: (x: number | null) => void;
  /** A part of the axis was marked. */
  onMark: (from: number, to: number) => void;
  /** Whether dragging marks. */
  isMarking: () => boolean;
}

/** Curves in a canvas, over uPlot. They may be given as often as they change: the look stays. */
export class CurvePlot {
  private plot: uPlot | null = null;
  private layout = "";
  private isHeld = (): boolean => false;
  private set: CurveSet = { x: new Float64Array(0), curves: [], steps: false };
  private span: Span = null;
  private bands: readonly Band[] = [];
  private look: PlotLook = { xLabel: "", yLabel: "", isLog: false, isDark: false };
  private readonly cursor: CurveCursor;
  private readonly labels = new CurveLabels();
  private readonly dense = new DenseCurves();
  private readonly watcher = new ResizeObserver(() => this.fit());

  constructor(
    private readonly place: HTMLElement,
    private readonly events: PlotEvents,
  ) {
    this.cursor = new CurveCursor(events.onCursor);
    this.watcher.observe(place);
  }

  destroy(): void {
    this.watcher.disconnect();
    this.plot?.destroy();
    this.plot = null;
  }

  show(set: CurveSet, span: Span, bands: readonly Band[], look: PlotLook): void {
    this.set = set;
    this.span = span;
    this.bands = bands;
    this.look = look;
    this.draw();
  }

  private draw(): void {
    const curves = this.set.curves.map(({ label, colour, dashed }) => [label, colour, dashed]);
    const layout = JSON.stringify([this.look, this.set.steps, curves]);
    if (this.plot !== null && layout === this.layout) {
      this.plot.setData(this.data());
    } else if (!this.isHeld()) {
      // What is made anew forgets a gesture that is under way: it waits for its end.
      this.layout = layout;
      this.rebuild();
    }
  }

  /** Looks at this, cut to what there is. */
  choose(span: Span): void {
    const [low, high] = this.whole();
    const { x } = this.set;
    const step = x.length > 1 ? (high - low) / x.length : 1;
    // Kept at once: two fingers tell of themselves one after the other, before this is drawn.
    this.span = limited(span, low, high, 4 * step);
    this.events.onSpan(this.span);
  }

  /** By a factor, about the cursor or else the middle. */
  zoom(factor: number, about?: number): void {
    const shown = this.shown();
    this.choose(zoomed(shown, about ?? (shown[0] + shown[1]) / 2, factor));
  }

  /** By a part of what is shown. */
  move(part: number): void {
    const [from, to] = this.shown();
    const step = (to - from) * part;
    this.choose(this.span === null ? null : [from + step, to + step]);
  }

  /** The cursor goes on by so many positions, and what is looked at with it; it begins in the middle. */
  step(by: number): void {
    const { x } = this.set;
    if (this.plot === null || x.length === 0) {
      return;
    }
    const [from, to] = this.shown();
    const at = this.cursor.position();
    const isSeen = at !== null && at >= from && at <= to;
    const index = isSeen ? this.indexAt(at) + by : this.indexAt((from + to) / 2);
    const next = centreAt(this.set, Math.min(Math.max(index, 0), x.length - 1));
    if (next < from || next > to) {
      this.choose([next - (to - from) / 2, next + (to - from) / 2]);
    }
    this.cursor.hold(this.plot, next);
  }

  /** The position of the value that is shown at x, by index; -1 where there is none. */
  indexAt(x: number): number {
    return indexAt(this.set.x, x);
  }

  /** The position under the cursor; null where there is none. */
  cursorAt(): number | null {
    return this.cursor.position();
  }

  /** From the first to the last position; of steps to the end of the last. */
  private whole(): readonly [number, number] {
    const { x, steps } = this.set;
    const last = x[x.length - 1] ?? 1;
    return [x[0] ?? 0, steps && x.length > 1 ? 2 * last - x[x.length - 2]! : last];
  }

  private shown(): readonly [number, number] {
    return this.span ?? this.whole();
  }

  private data(): uPlot.AlignedData {
    return [this.set.x, ...columnsOf(this.set, this.look.isLog)] as uPlot.AlignedData;
  }

  private rebuild(): void {
    this.plot?.destroy();
    const { width, height } = this.place.getBoundingClientRect();
    const size = { width: Math.max(80, width), height: Math.max(80, height) };
    this.plot = new uPlot({ ...this.options(), ...size }, this.data(), this.place);
    this.isHeld = this.listen(this.plot);
  }

  private options(): Omit<uPlot.Options, "width" | "height"> {
    const { isDark } = this.look;
    return {
      legend: { show: false },
      cursor: {
        drag: { x: false, y: false },
        points: { show: false },
        y: false,
        move: this.cursor.place,
      },
      scales: {
        x: { time: false, range: () => [...this.shown()] as [number, number] },
        y: {
          distr: this.look.isLog ? 3 : 1,
          range: () => valueRange(extent(this.set, this.span), this.look.isLog),
        },
      },
      axes: axesOf(this.look),
      series: [{}, ...this.set.curves.map((curve) => seriesOf(curve, this.set.steps, isDark, this.dense))],
      hooks: {
        drawClear: [(plot) => drawBands(plot, this.bands, this.look.isDark)],
        drawSeries: [(plot, series) => this.onSeries(plot, series)],
        draw: [(plot) => this.onDrawn(plot)],
        setCursor: [this.cursor.onDrawn],
      },
    };
  }

  private onSeries(plot: uPlot, series: number): void {
    const curve = this.set.curves[series - 1];
    // While a pointer holds the plot, the set may already have fewer curves than it.
    if (curve !== undefined) {
      this.dense.draw(plot, series, curveColour(curve.colour, this.look.isDark), curve.dashed ?? false);
    }
  }

  private onDrawn(plot: uPlot): void {
    this.labels.draw(plot, this.set, this.shown(), this.look.isDark);
    this.cursor.show(plot);
  }

  private listen(plot: uPlot): () => boolean {
    const { over } = plot;
    const at = (left: number): number => plot.posToVal(left, "x");
    const span = ([from, to]: readonly [number, number]): [number, number] => [at(from), at(to)];
    over.addEventListener("mousemove", this.cursor.onMouse, { capture: true });
    return listenToCurveGestures(over, {
      isMarking: this.events.isMarking,
      onZoom: (about, factor) => this.zoom(factor, at(about)),
      onMove: (by) => this.move(-by / Math.max(1, over.clientWidth)),
      onDrag: (part) => {
        const [left, right] = part ?? [0, 0];
        const height = part === null ? 0 : over.clientHeight;
        plot.setSelect({ left, top: 0, width: right - left, height }, false);
      },
      onChosen: (part) => this.choose(span(part)),
      onMarked: (part) => this.events.onMark(...span(part)),
      onWhole: () => this.choose(null),
      onReleased: () => this.draw(),
    });
  }

  private fit(): void {
    const { width, height } = this.place.getBoundingClientRect();
    if (this.plot !== null && width > 0 && height > 0) {
      this.plot.setSize({ width, height });
    }
  }
}
