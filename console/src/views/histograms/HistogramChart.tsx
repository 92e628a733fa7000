import { useMemo } from "preact/hooks";
import { CurveChart } from "../../charts/CurveChart";
import type { Span } from "../../charts/curves";
import { curveSetOf } from "./display";
import type { HistogramKind } from "./kinds";
import { axisLabel, readOut } from "./readOut";
import type { Curves } from "./useCurves";
import { bandsOf, type Regions } from "./useRegions";

interface Props {
  kind: HistogramKind;
  shown: Curves;
  regions: Regions;
  isLog: boolean;
  factor: number;
  span: Span;
  onSpan: (span: Span) => void;
  isMarking: boolean;
  setMarking: (isMarking: boolean) => void;
}

export function HistogramChart(props: Props): preact.JSX.Element {
  const { kind, shown, regions, isLog, factor, span, onSpan, isMarking, setMarking } = props;
  const { curves, axis } = shown;
  const fit = regions.reading.fit;
  const set = useMemo(
    () => curveSetOf(curves, axis, factor, fit),
    [curves, axis.gain, axis.offset, axis.unit, factor, fit],
  );
  const bandsKey = JSON.stringify([regions.regions, regions.selected, axis]);
  const bands = useMemo(() => bandsOf(regions.regions, regions.selected, axis), [bandsKey]);
  const spanKey = JSON.stringify(span);
  const steadySpan = useMemo(() => span, [spanKey]);
  return (
    <CurveChart
      set={set}
      xLabel={axisLabel(kind.quantity, axis)}
      yLabel={factor === 1 ? "Counts per bin" : `Counts per ${factor} bins`}
      isLog={isLog}
      span={steadySpan}
      onSpan={onSpan}
      bands={bands}
      isMarking={isMarking}
      onMark={(from, to) => {
        setMarking(false);
        regions.mark(from, to);
      }}
      readOut={(index) => readOut(index, curves, set.curves.map(({ values }) => values), axis, factor)}
      description={`${kind.title}: ${curves.map(({ label }) => label).join(", ")}`}
    />
  );
}
