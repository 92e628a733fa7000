import { useMemo, useState } from "preact/hooks";
import { blocks, server } from "../../app/state";
import { usePolled } from "../../app/usePolled";
import { CurveChart } from "../../charts/CurveChart";
import { type Block, ofType } from "../../model/blocks";
import { getHistograms } from "../../server/queries";
import { CountingControls } from "../common/CountingControls";
import { Freshness } from "../common/Freshness";
import { axisOf } from "../histograms/axisControl";
import { useBusiest } from "../histograms/busiest";
import { curveKey } from "../histograms/curveKey";
import { curveSetOf, spanOf, spanText } from "../histograms/display";
import { spectra } from "../histograms/kinds";
import { axisLabel, readOut } from "../histograms/readOut";
import { selectionText } from "../histograms/selection";

const intervalMs = 500;

/** The first spectrum's busiest channel, live: that something is measured is seen at the first look. */
export function LiveSpectrum(): preact.JSX.Element | null {
  const [spectrum] = ofType(blocks.value.value ?? [], spectra.blockType);
  return spectrum === undefined ? null : <Live block={spectrum} key={spectrum.path} />;
}

function Live({ block }: { block: Block }): preact.JSX.Element {
  const channel = useBusiest(block)?.channel ?? 0;
  const [look, setLook] = useState<string | null>(null);
  const [isLog, setLog] = useState(false);
  const reading = usePolled(
    async () => (await getHistograms(server, block.path, [channel]))[0]?.counts ?? null,
    intervalMs,
    [channel],
  );
  const axis = axisOf(spectra, block, curveKey(block.path, channel));
  const key = JSON.stringify(axis);
  const label = `channel ${channel}`;
  const curves = useMemo(
    () => [{ label, counts: reading.value ?? [], calibration: axis, isCopy: false }],
    [reading.value, label, key],
  );
  const set = useMemo(() => curveSetOf(curves, axis, 1, null), [curves]);
  const span = useMemo(() => spanOf(look, axis), [look, key]);
  const known = ofType(blocks.value.value ?? [], spectra.blockType);
  const closer = selectionText([{ block, channels: [channel] }], known);
  return (
    <section class="panel live" aria-label="Live spectrum">
      <div class="row">
        <h2>{`${block.name}, ${label}`}</h2>
        <button type="button" aria-pressed={isLog} onClick={() => setLog(!isLog)}>log</button>
        <CountingControls paths={[block.path]} />
        <a href={`#/spectra?show=${encodeURIComponent(closer)}`}>look closer</a>
        <Freshness reading={reading} intervalMs={intervalMs} />
      </div>
      <div class="grow">
        <CurveChart
          set={set}
          xLabel={axisLabel(spectra.quantity, axis)}
          yLabel="Counts per bin"
          isLog={isLog}
          span={span}
          onSpan={(next) => setLook(spanText(next, axis))}
          readOut={(index) => readOut(index, curves, set.curves.map(({ values }) => values), axis, 1)}
          description={`Spectrum of ${block.name}, ${label}`}
        />
      </div>
    </section>
  );
}
