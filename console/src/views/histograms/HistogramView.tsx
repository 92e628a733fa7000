import "./histograms.css";
import { useRef, useState } from "preact/hooks";
import { parameter, setParameter } from "../../app/route";
import { blocks } from "../../app/state";
import { timeOfDay } from "../../base/format";
import type { Calibration } from "../../analysis/calibration";
import { calibrated, withError } from "../../analysis/resolution";
import type { Span } from "../../charts/curves";
import { type Block, ofType } from "../../model/blocks";
import { NoBlock } from "../common/BlockChooser";
import { useKept } from "../common/useKept";
import { useKeys } from "../common/useKeys";
import { axisControlOf } from "./axisControl";
import { CalibrationPanel } from "./CalibrationPanel";
import { ChannelPicker, stepped } from "./ChannelPicker";
import { CurveList } from "./CurveList";
import { copyOf } from "./copies";
import { rebinFactors, spanOf, spanText } from "./display";
import { FilePanel } from "./FilePanel";
import { drawingNotes } from "./drawingNotes";
import { HistogramChart } from "./HistogramChart";
import type { HistogramKind } from "./kinds";
import { RegionsOf } from "./RegionsOf";
import { type Curves, type Freezing, useCurves } from "./useCurves";
import { Toolbar } from "./Toolbar";
import { type Regions, useRegions } from "./useRegions";

/** Histograms of one kind: chosen, looked at, analysed. */
export function HistogramView({ kind }: { kind: HistogramKind }): preact.JSX.Element {
  const own = ofType(blocks.value.value ?? [], kind.blockType).filter(({ path }) => path !== "");
  const freezing = useState(false);
  // What is frozen stays when its block goes.
  if (own.length === 0 && !freezing[0]) {
    return <NoBlock type={kind.blockType} example={kind.howToConfigure} />;
  }
  return <Histograms kind={kind} own={own} freezing={freezing} />;
}

interface HistogramsProps {
  kind: HistogramKind;
  own: readonly Block[];
  freezing: Freezing;
}

function Histograms({ kind, own, freezing }: HistogramsProps): preact.JSX.Element {
  const shown = useCurves(kind, own, freezing);
  const regions = useRegions(shown);
  const [look, setLook] = useKept("span");
  const span = spanOf(look, shown.axis);
  const isLog = parameter("log") === "1";
  const factor = rebinFactors.find((known) => String(known) === parameter("rebin")) ?? 1;
  const place = useRef<HTMLDivElement>(null);
  const [isMarking, setMarking] = useState(false);
  const onSpan = (next: Span): void => setLook(spanText(next, shown.axis));
  useHistogramKeys(shown, isLog, () => regions.markClearest(span));
  return (
    <div class="split histograms">
      <div class="stack">
        <Toolbar {...{ kind, shown, isLog, factor, isMarking, setMarking }} onWhole={() => onSpan(null)} />
        <div class="panel grow place" ref={place}>
          <HistogramChart {...{ kind, shown, regions, isLog, factor, span, onSpan, isMarking, setMarking }} />
        </div>
      </div>
      <SidePanels kind={kind} own={own} shown={shown} regions={regions} span={span} place={() => place.current} />
    </div>
  );
}

interface SideProps {
  kind: HistogramKind;
  own: readonly Block[];
  shown: Curves;
  regions: Regions;
  span: Span;
  place: () => HTMLElement | null;
}

function SidePanels({ kind, own, shown, regions, span, place }: SideProps): preact.JSX.Element {
  const { curves, analysed, axis, block } = shown;
  const fitText = fitTextOf(regions, axis);
  const curve = analysed?.source ?? null;
  const control = curve === null ? null : axisControlOf(curve);
  return (
    <div class="stack side">
      <section class="panel stack" aria-label="Curves">
        <ChannelPicker blocks={own} selections={shown.selections} onChange={shown.choose} />
        <CurveList {...{ curves, analysed, fitText }} onAnalyse={shown.analyse} onRemove={shown.remove} />
        {drawingNotes(curves, axis).map((note) => <p class="warn" key={note}>{note}</p>)}
      </section>
      <RegionsOf kind={kind} shown={shown} regions={regions} control={control} span={span} />
      {block !== undefined && curve !== null && control !== null && (
        <section class="panel">
          <CalibrationPanel key={block.path} {...{ kind, block, curve, axis, control }} />
        </section>
      )}
      <FilePanel
        title={kind.title}
        curves={curves}
        fitText={fitText}
        axis={axis}
        place={place}
        canCopy={analysed !== undefined}
        onCopy={() => keepCopy(shown)}
        onLoad={shown.addCopies}
      />
    </div>
  );
}

function keepCopy({ analysed, addCopies }: Curves): void {
  if (analysed !== undefined) {
    const { label, counts, calibration, source } = analysed;
    addCopies([copyOf({ label: `${label} ${timeOfDay(Date.now())}`, counts, calibration, source })]);
  }
}

function fitTextOf({ selected, reading }: Regions, axis: Calibration): string | null {
  if (reading.fit === null) {
    return null;
  }
  const { mean, resolution } = calibrated(reading.fit, axis);
  const wide = resolution === null ? "" : `, resolution ${withError(resolution)} %`;
  return `Fit of R${selected + 1}: ${withError(mean)} ${axis.unit}${wide}`;
}

function useHistogramKeys(shown: Curves, isLog: boolean, markClearest: () => void): void {
  useKeys({
    l: () => setParameter("log", isLog ? null : "1"),
    f: () => shown.setFrozen(!shown.isFrozen),
    n: () => shown.choose(stepped(shown.selections, 1)),
    p: () => shown.choose(stepped(shown.selections, -1)),
    m: markClearest,
  });
}
