import "./rates.css";
import { useMemo } from "preact/hooks";
import { channelsOfAddress, formatChannels, toggled } from "../../analysis/channels";
import { isAway, isKnown } from "../../app/reach";
import { parameter, setParameter } from "../../app/route";
import { clock, server } from "../../app/state";
import { usePolled } from "../../app/usePolled";
import type { Block } from "../../model/blocks";
import { chosenBlock, NoBlock } from "../common/BlockChooser";
import { Freshness } from "../common/Freshness";
import { optionsOf } from "./options";
import { RateBars } from "./RateBars";
import { RateControls } from "./RateControls";
import { RateHistory } from "./RateHistory";
import type { KnownRates } from "./RateReader";
import { rowsOf, sorted } from "./rateRows";
import { latestCounts, tickOf } from "./rateTimes";
import { spanNote } from "./spanNote";
import { getChannelNames, ratesMs, useRates } from "./useRates";

export function RatesView(): preact.JSX.Element {
  const block = chosenBlock("rate_counters_sink");
  if (block === null) {
    return <NoBlock type="rate_counters_sink" example='behind a source with the "data_type" "rate_counters"' />;
  }
  return <RatesOf key={block.path} block={block} />;
}

const namesMs = 30_000;
const noNames: readonly string[] = [];
const defaultChannels = "0-3";

function RatesOf({ block }: { block: Block }): preact.JSX.Element {
  const options = optionsOf(parameter);
  const reading = useRates(block.path);
  const namesRead = usePolled(() => getChannelNames(server, block.path), namesMs, [block.path]);
  const names = namesRead.value ?? noNames;
  const { records, version } = reading.value ?? { records: [], version: 0 };
  const { tickNs } = options;
  const tick = useMemo(() => (tickNs === null ? tickOf(records) : tickNs * 1e-9), [version, tickNs]);
  const counted = useMemo(() => latestCounts(records, tick, options.seconds), [version, tick, options.seconds]);
  const rows = useMemo(
    () => (counted === null ? [] : sorted(rowsOf(counted, names), options.order)),
    [counted, options.order, names],
  );
  const channels = channelsOfAddress(parameter("ch") ?? defaultChannels, rows.length);
  return (
    <div class="rates">
      <section class="panel stack">
        <RateControls chosen={block} options={options} tick={tick} />
        <Silence known={reading.value} />
        <NamesFault fault={namesRead.fault} />
        <SpanNote text={counted === null ? null : spanNote(options.seconds, counted.seconds, tick)} />
        <RateBars
          rows={rows}
          isNow={isKnown(reading) && silenceOf(reading.value) < silenceMs}
          isLog={options.isLog}
          chosen={channels}
          onToggle={(channel) => setParameter("ch", formatChannels(toggled(channels, channel)))}
        />
        <Freshness reading={reading} intervalMs={ratesMs} />
      </section>
      <section class="panel stack">
        <RateHistory known={reading.value} channels={channels} names={names} tick={tick} options={options} />
      </section>
    </div>
  );
}

function NamesFault({ fault }: { fault: string | null }): preact.JSX.Element | null {
  return fault === null || isAway.value ? null : (
    <p class="warn" role="alert" data-test="names-fault">{`The names of the channels can't be read: ${fault}`}</p>
  );
}

function SpanNote({ text }: { text: string | null }): preact.JSX.Element | null {
  return text === null ? null : <p class="warn" data-test="rates-span">{text}</p>;
}

const silenceMs = 5_000;

/** For how long no record has come, in ms. */
function silenceOf(known: KnownRates | null): number {
  return known === null ? 0 : clock.value - known.newestAt;
}

/** Answers go on though no record comes: rates that stand still must not look alive. */
function Silence(props: { known: KnownRates | null }): preact.JSX.Element | null {
  const { known } = props;
  const age = silenceOf(known);
  if (known === null || age < silenceMs) {
    return null;
  }
  const text =
    known.records.length === 0
      ? "No record has come yet: is the endpoint of the source enabled, and is the board started?"
      : `No new record for ${Math.round(age / 1000)} s: these are the rates of then.`;
  return <p class="alarm" role="alert" data-test="rates-silence">{text}</p>;
}
