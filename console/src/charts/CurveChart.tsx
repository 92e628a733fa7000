import { useEffect, useRef, useState } from "preact/hooks";
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
  onMark?: (from: number, to: number) => void;
  /** What stands beside the cursor: the position's text and a value of each curve at this index. */
  readOut?: (index: number, x: number) => string;
  /** For those who can't see the picture. */
  description: string;
}

const noBands: readonly Band[] = [];

/** Curves with zoom, cursor and marks; has the keys + - ← → Home when it has the focus. */
export function CurveChart(props: CurveChartProps): preact.JSX.Element {
  const place = useRef<HTMLDivElement>(null);
  const plot = useRef<CurvePlot | null>(null);
  const latest = useRef(props);
  latest.current = props;
  const [cursor, setCursor] = useState<number | null>(null);

  useEffect(() => {
    const made = new CurvePlot(place.current!, {
      onSpan: (span) => latest.current.onSpan(span),
      onCursor: setCursor,
      onMark: (from, to) => latest.current.onMark?.(from, to),
    });
    plot.current = made;
    return () => made.destroy();
  }, []);

  const { set, span, bands = noBands, xLabel, yLabel, isLog } = props;
  const dark = isDark.value;
  useEffect(
    () => plot.current!.show(set, span, bands, { xLabel, yLabel, isLog, isDark: dark }),
    [set, span, bands, xLabel, yLabel, isLog, dark],
  );

  return (
    <div class="chart" tabIndex={0} role="img" aria-label={props.description} onKeyDown={(event) => onKey(event, plot.current!)}>
      <div class="plot" ref={place} />
      <p class="readout" data-test="readout">
        {cursor === null || !props.readOut ? "" : props.readOut(plot.current!.indexAt(cursor), cursor)}
      </p>
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
};

function onKey(event: KeyboardEvent, plot: CurvePlot): void {
  const action = actions[event.key];
  if (action !== undefined && !isTyping(event)) {
    action(plot);
    event.preventDefault();
  }
}
