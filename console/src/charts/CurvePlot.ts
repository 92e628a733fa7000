import uPlot from "uplot";
import "uplot/dist/uPlot.min.css";
import { short } from "../base/format";
import {
  type Band, curveColour, type CurveSet, extent, indexAt, limited, logFloor, type Span, tickTexts, valueRange, zoomed,
} from "./curves";

export interface PlotLook {
  xLabel: string;
  yLabel: string;
  isLog: boolean;
  isDark: boolean;
}

export interface PlotEvents {
  /** The operator chose what to look at. */
  onSpan: (span: Span) => void;
  /** The position under the cursor; null when it left. */
  onCursor: (x: number | null) => void;
  /** A part of the axis was marked with shift and mouse. */
  onMark?: (from: number, to: number) => void;
}

/**
 * Curves in a canvas, over uPlot: the wheel zooms, and moves with shift; dragging chooses a part, and marks one with
 * shift; a double click shows all; one finger moves, two zoom. Curves may be given as often as they change: the look
 * stays.
 */
export class CurvePlot {
  private plot: uPlot | null = null;
  private layout = "";
  private set: CurveSet = { x: new Float64Array(0), curves: [], steps: false };
  private span: Span = null;
  private bands: readonly Band[] = [];
  private look: PlotLook = { xLabel: "", yLabel: "", isLog: false, isDark: false };
  private readonly watcher = new ResizeObserver(() => this.fit());

  constructor(
    private readonly place: HTMLElement,
    private readonly events: PlotEvents,
  ) {
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
    const layout = JSON.stringify([look, set.steps, set.curves.map((curve) => [curve.label, curve.colour, curve.dashed])]);
    if (this.plot === null || layout !== this.layout) {
      this.layout = layout;
      this.rebuild();
    } else {
      this.plot.setData(this.data());
    }
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

  // What isn't above zero has no place on a logarithmic axis: it stands at its foot.
  private data(): uPlot.AlignedData {
    const columns = this.set.curves.map(({ values, gaps }) => {
      if (gaps) {
        return Array.from(values, (value) => (Number.isNaN(value) ? null : this.look.isLog ? Math.max(value, logFloor) : value));
      }
      if (!this.look.isLog) {
        return values as Float64Array;
      }
      const raised = new Float64Array(values.length);
      for (let i = 0; i < values.length; ++i) {
        raised[i] = values[i]! > logFloor ? values[i]! : logFloor;
      }
      return raised;
    });
    return [this.set.x, ...columns];
  }

  private rebuild(): void {
    this.plot?.destroy();
    const { width, height } = this.place.getBoundingClientRect();
    this.plot = new uPlot(
      { ...this.options(), width: Math.max(80, width), height: Math.max(80, height) },
      this.data(),
      this.place,
    );
    this.listen(this.plot.over);
  }

  private options(): Omit<uPlot.Options, "width" | "height"> {
    const ink = this.look.isDark ? "#b8c0cc" : "#444c56";
    const grid = { stroke: this.look.isDark ? "#2a3038" : "#e3e6ea", width: 1 };
    const font = "12px system-ui, sans-serif";
    const axis = { stroke: ink, grid, ticks: grid, font, labelFont: font, labelSize: 18 };
    return {
      legend: { show: false },
      cursor: { drag: { x: true, y: false, setScale: false }, points: { show: false }, y: false },
      scales: {
        x: { time: false, range: () => [...this.shown()] as [number, number] },
        y: { distr: this.look.isLog ? 3 : 1, range: () => valueRange(extent(this.set, this.span), this.look.isLog) },
      },
      axes: [
        { ...axis, label: this.look.xLabel, values: (_, ticks) => tickTexts(ticks) },
        { ...axis, label: this.look.yLabel, size: 62, values: (_, ticks) => ticks.map((tick) => (tick === null ? "" : short(tick))) },
      ],
      series: [{}, ...this.set.curves.map((curve) => this.seriesOf(curve.label, curve.colour, curve.dashed ?? false))],
      hooks: {
        drawClear: [(plot) => this.drawBands(plot)],
        setSelect: [(plot) => this.onSelect(plot)],
        setCursor: [(plot) => this.onCursor(plot)],
      },
    };
  }

  private seriesOf(label: string, colour: number, dashed: boolean): uPlot.Series {
    const stepped = uPlot.paths.stepped!({ align: 1 });
    const linear = uPlot.paths.linear!();
    return {
      label,
      stroke: curveColour(colour, this.look.isDark),
      width: dashed ? 2 : 1.25,
      points: { show: false },
      spanGaps: false,
      ...(dashed ? { dash: [6, 4] } : {}),
      // Where many bins share a pixel, steps can't be seen, and cost.
      paths: (plot, index, from, to) =>
        (this.set.steps && to - from < 1.5 * plot.bbox.width ? stepped : linear)(plot, index, from, to),
    };
  }

  private drawBands(plot: uPlot): void {
    const { ctx, bbox } = plot;
    ctx.save();
    ctx.beginPath();
    ctx.rect(bbox.left, bbox.top, bbox.width, bbox.height);
    ctx.clip();
    for (const band of this.bands) {
      const [left, right] = [plot.valToPos(band.from, "x", true), plot.valToPos(band.to, "x", true)];
      ctx.fillStyle = band.selected ? "rgba(90, 140, 220, 0.28)" : "rgba(130, 140, 155, 0.18)";
      ctx.fillRect(left, bbox.top, Math.max(1, right - left), bbox.height);
      ctx.fillStyle = this.look.isDark ? "#c9d1db" : "#30363d";
      ctx.textAlign = "left";
      ctx.font = `${12 * devicePixelRatio}px system-ui, sans-serif`;
      ctx.fillText(band.label, left + 4, bbox.top + 14 * devicePixelRatio);
    }
    ctx.restore();
  }

  private marking = false;

  private onSelect(plot: uPlot): void {
    const { left, width } = plot.select;
    if (width < 3) {
      return;
    }
    const [from, to] = [plot.posToVal(left, "x"), plot.posToVal(left + width, "x")];
    plot.setSelect({ left: 0, top: 0, width: 0, height: 0 }, false);
    if (this.marking && this.events.onMark) {
      this.events.onMark(from, to);
    } else {
      this.choose([from, to]);
    }
  }

  private onCursor(plot: uPlot): void {
    const left = plot.cursor.left ?? -1;
    this.events.onCursor(left < 0 ? null : plot.posToVal(left, "x"));
  }

  /** Looks at this, cut to what there is. */
  choose(span: Span): void {
    const [low, high] = this.whole();
    const { x } = this.set;
    const step = x.length > 1 ? (high - low) / x.length : 1;
    this.events.onSpan(limited(span, low, high, 4 * step));
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

  /** The position of the value that is shown at x, by index; -1 where there is none. */
  indexAt(x: number): number {
    return indexAt(this.set.x, x);
  }

  private listen(over: HTMLElement): void {
    over.addEventListener("wheel", (event) => {
      event.preventDefault();
      const about = this.plot!.posToVal(event.offsetX, "x");
      if (event.shiftKey || Math.abs(event.deltaX) > Math.abs(event.deltaY)) {
        this.move(Math.sign(event.deltaX + event.deltaY) * 0.1);
      } else {
        this.zoom(event.deltaY > 0 ? 1.25 : 0.8, about);
      }
    }, { passive: false });
    over.addEventListener("mousedown", (event) => (this.marking = event.shiftKey), { capture: true });
    over.addEventListener("dblclick", () => this.choose(null));
    this.listenToFingers(over);
  }

  // One finger moves, two zoom.
  private listenToFingers(over: HTMLElement): void {
    let before: { at: number; width: number } | null = null;
    const read = (event: TouchEvent): { at: number; width: number } => {
      const left = over.getBoundingClientRect().left;
      const [a, b] = [event.touches[0]!, event.touches[1] ?? event.touches[0]!];
      return { at: (a.clientX + b.clientX) / 2 - left, width: Math.abs(a.clientX - b.clientX) };
    };
    over.addEventListener("touchstart", (event) => (before = read(event)), { passive: true });
    over.addEventListener("touchend", () => (before = null), { passive: true });
    over.addEventListener("touchmove", (event) => {
      event.preventDefault();
      const next = read(event);
      if (before !== null) {
        if (before.width > 20 && next.width > 20) {
          this.zoom(before.width / next.width, this.plot!.posToVal(next.at, "x"));
        } else {
          this.move((before.at - next.at) / over.clientWidth);
        }
      }
      before = next;
    }, { passive: false });
  }

  private fit(): void {
    const { width, height } = this.place.getBoundingClientRect();
    if (this.plot !== null && width > 0 && height > 0) {
      this.plot.setSize({ width, height });
    }
  }
}
