import { useMemo } from "preact/hooks";
import { short } from "../../base/format";
import { CurveChart } from "../../charts/CurveChart";
import { type CurveSet, logFloor, type Span } from "../../charts/curves";
import { useKept } from "../common/useKept";
import type { RateOptions } from "./options";
import { curvesOf } from "./rateCurves";
import type { KnownRates } from "./RateReader";
import { nameOf } from "./rateRows";

export interface RateHistoryProps {
  known: KnownRates | null;
  channels: readonly number[];
  names: readonly string[];
  tick: number | null;
  options: RateOptions;
}

/** Rates since the start have no history of their own: theirs is drawn over this. */
const defaultSeconds = 10;

export function RateHistory(props: RateHistoryProps): preact.JSX.Element {
  const { known, channels, names, tick, options } = props;
  const records = known?.records ?? [];
  const [spanText, keepSpan] = useKept("span");
  const span = useMemo(() => spanOf(spanText), [spanText]);
  const seconds = options.seconds ?? defaultSeconds;
  const count = records[records.length - 1]?.countsIn.length ?? 0;
  const name = (channel: number): string => nameOf(names, channel, count);
  const key = `${channels.join()} ${names.join()}`;
  const set = useMemo(
    () => (tick === null ? null : curvesOf(records, channels, name, tick, seconds)),
    [known?.version, key, tick, seconds],
  );
  return (
    <>
      <h2>{`History, over ${seconds} s each`}</h2>
      {set === null ? (
        <p class="faint grow">Waiting for records over 3 s, or for the timestamp unit …</p>
      ) : (
        <div class="grow">
          <CurveChart
            set={set}
            xLabel="s before the latest record"
            yLabel={options.isLog ? `counts per second; at the foot: ${logFloor} or less` : "counts per second"}
            isLog={options.isLog}
            span={span}
            onSpan={(chosen) => keepSpan(chosen === null ? null : chosen.map((x) => x.toPrecision(6)).join(","))}
            readOut={(index) => (index < 0 ? "" : `${set.x[index]!.toFixed(1)} s: ${valuesAt(set, index)}`)}
            description={`Rates of ${channels.map(name).join(", ")} over time`}
          />
        </div>
      )}
      <p class="faint">Solid is in, dashed is out. Nothing is drawn over times without records.</p>
    </>
  );
}

function valuesAt(set: CurveSet, index: number): string {
  return set.curves.map(({ label, values }) => `${label} ${short(values[index] ?? NaN)}`).join(", ");
}

function spanOf(text: string | null): Span {
  const [from = NaN, to = NaN] = (text ?? "").split(",").map(Number);
  return from < to ? [from, to] : null;
}
