import { useMemo, useState } from "preact/hooks";
import { blocks, server } from "../../app/state";
import { usePolled } from "../../app/usePolled";
import { CurveChart } from "../../charts/CurveChart";
import type { CurveSet, Span } from "../../charts/curves";
import { whole } from "../../base/format";
import { type Block, ofType, sizeOf } from "../../model/blocks";
import type { Histogram } from "../../model/data";
import { getHistograms } from "../../server/queries";
import { CountingControls } from "../common/CountingControls";
import { Freshness } from "../common/Freshness";
import { selectionText } from "../histograms/selection";

const intervalMs = 500;
const largestSearch = 4_000_000; // bins

/** The first spectrum's busiest channel, live: that something is measured is seen at the first look. */
export function LiveSpectrum(): preact.JSX.Element | null {
  const [spectrum] = ofType(blocks.value.value ?? [], "spectrum");
  return spectrum === undefined ? null : <Live block={spectrum} key={spectrum.path} />;
}

function Live(props: { block: Block }): preact.JSX.Element {
  const { block } = props;
  const [channel, setChannel] = useState<number | null>(null);
  const [span, setSpan] = useState<Span>(null);
  const [isLog, setLog] = useState(false);
  const reading = usePolled(
    async () => {
      if (channel !== null) {
        return (await getHistograms(server, block.path, [channel]))[0];
      }
      const busiest = await findBusiest(block);
      if (busiest !== undefined && sum(busiest.counts) > 0) {
        setChannel(busiest.channel);
      }
      return busiest;
    },
    intervalMs,
    [channel ?? -1],
  );
  const set = useMemo(() => setOf(reading.value), [reading.value]);
  const shown = reading.value?.channel ?? 0;
  const closer = selectionText([{ block, channels: [shown] }], ofType(blocks.value.value ?? [], "spectrum"));
  return (
    <section class="panel live" aria-label="Live spectrum">
      <div class="row">
        <h2>{`${block.name}, channel ${shown}`}</h2>
        <button type="button" aria-pressed={isLog} onClick={() => setLog(!isLog)}>log</button>
        <CountingControls paths={[block.path]} />
        <a href={`#/spectra?show=${encodeURIComponent(closer)}`}>look closer</a>
        <Freshness reading={reading} intervalMs={intervalMs} />
      </div>
      <div class="grow">
        <CurveChart
          set={set}
          xLabel="bin"
          yLabel="counts"
          isLog={isLog}
          span={span}
          onSpan={setSpan}
          readOut={(index) => `bin ${index} · ${whole(reading.value?.counts[index] ?? 0)} counts`}
          description={`Spectrum of ${block.name}, channel ${shown}`}
        />
      </div>
    </section>
  );
}

async function findBusiest(block: Block): Promise<Histogram | undefined> {
  const channels = sizeOf(block, "channels");
  const few = Math.max(1, Math.min(channels, Math.floor(largestSearch / Math.max(1, sizeOf(block, "bins")))));
  const all = await getHistograms(server, block.path, [...Array(few).keys()]);
  return all.reduce<Histogram | undefined>(
    (best, next) => (best === undefined || sum(next.counts) > sum(best.counts) ? next : best),
    undefined,
  );
}

function sum(counts: Uint32Array): number {
  let total = 0;
  for (const count of counts) {
    total += count;
  }
  return total;
}

function setOf(histogram: Histogram | null | undefined): CurveSet {
  const counts = histogram?.counts ?? new Uint32Array(0);
  return {
    x: Float64Array.from(counts.keys()),
    curves: [{ label: `channel ${histogram?.channel ?? 0}`, colour: 0, values: counts }],
    steps: true,
  };
}
