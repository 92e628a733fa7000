import "./curves.css";
import { useLayoutEffect, useRef, useState } from "preact/hooks";
import { isTyping } from "../base/typing";
import { isDark } from "../base/theme";
import { CurvePlot } from "./CurvePlot";
import type { Band, CurveSet, Span } from "./curves";

export interface CurveChartProps {
  set: CurveSet;
  xLabel: string;
  yLabel: string;
  isLog: boolean;
  span: Span;
  onSpan: (span: Span) => void;
  bands?: readonly Band[];
  /** Whether dragging marks; with Shift held it always does. */
  isMarking?: boolean;
  onMark?: (from: number, to: number) => void;
  /** What stands beside the cursor: the position's text and a value of each curve at this index. */
  readOut?: (index: number, x: number) => string;
  /** For those who can't see the picture. */
  description: string;
}

const noBands: readonly Band[] = [];

/** Curves with zoom, cursor and marks; has the keys + - ← → Home, and , . for the cursor, while focused. */
export function CurveChart(props: CurveChartProps): preact.JSX.Element {
  const place = useRef<HTMLDivElement>(null);
  const plot = useRef<CurvePlot | null>(null);
  const latest = useRef(props);
  latest.current = props;
  const [cursor, setCursor] = useState<number | null>(null);
  const [spoken, setSpoken] = useState("");

  // Layout effects run before the next gesture: a later one would put back what that has changed since.
  useLayoutEffect(() => {
    const made = new CurvePlot(place.current!, {
      onSpan: (span) => latest.current.onSpan(span),
      onCursor: setCursor,
      onMark: (from, to) => latest.current.onMark?.(from, to),
      isMarking: () => latest.current.isMarking === true,
    });
    plot.current = made;
    return () => made.destroy();
  }, []);

  const { set, span, bands = noBands, xLabel, yLabel, isLog } = props;
  const dark = isDark.value;
  useLayoutEffect(
    () => plot.current!.show(set, span, bands, { xLabel, yLabel, isLog, isDark: dark }),
    [set, span, bands, xLabel, yLabel, isLog, dark],
  );
  const textAt = (x: number | null): string =>
    x === null || !props.readOut ? "" : props.readOut(plot.current!.indexAt(x), x);
  const onKey = (event: KeyboardEvent): void => {
    if (act(event, plot.current!)) {
      setSpoken(textAt(plot.current!.cursorAt()));
    }
  };

  return (
    <div
      class="chart curvechart"
      tabIndex={0}
      role="group"
      aria-roledescription="chart"
      aria-label={props.description}
      onKeyDown={onKey}
    >
      <div class={props.isMarking ? "plot marking" : "plot"} ref={place} />
      <p class="readout" data-test="readout">{textAt(cursor)}</p>
      {/* The counts change all the time: only what keys ask for is read out. */}
      <p class="spoken" aria-live="polite">{spoken}</p>
    </div>
  );
}

const actions: Record<string, (plot: CurvePlot) => void> = {
  "+": (plot) => plot.zoom(0.7),
  "=": (plot) => plot.zoom(0.7),
  "-": (plot) => plot.zoom(1 / 0.7),
  ArrowLeft: (plot) => plot.move(-0.1),
  ArrowRight: (plot) => plot.move(0.1),
  PageUp: (plot) => plot.move(-0.9),
  PageDown: (plot) => plot.move(0.9),
  Home: (plot) => plot.choose(null),
  ",": (plot) => plot.step(-1),
  ".": (plot) => plot.step(1),
};

/** Whether the key is one of the chart's. */
function act(event: KeyboardEvent, plot: CurvePlot): boolean {
  const action = actions[event.key];
  if (action === undefined || isTyping(event)) {
    return false;
  }
  action(plot);
  event.preventDefault();
  return true;
}
