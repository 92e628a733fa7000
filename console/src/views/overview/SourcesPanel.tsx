import { short, whole } from "../../base/format";
import { isKnown, timeOfDayOf } from "../../app/reach";
import { account, blocks } from "../../app/state";
import type { Flow } from "../../model/flow";
import type { Entry, Ledger } from "../../model/ledger";
import { lossOf } from "../../model/loss";
import { type Pulse, pulseOf, unknownPulse } from "../../model/silence";
import { Freshness } from "../common/Freshness";

interface Source {
  entry: Entry;
  flow: Flow | undefined;
  board: string;
  endpoint: string;
}

/** Whether data flow, source by source, in the order of the account. */
export function SourcesPanel(): preact.JSX.Element {
  const reading = account.value;
  const sources = reading.value === null ? [] : sourcesOf(reading.value.ledger, reading.value.flows);
  return (
    <section class="panel" aria-label="Sources">
      <h2>Sources</h2>
      <div class="scroll">
        <table data-test="sources">
          <thead>
            <tr>
              <th>board</th>
              <th>source</th>
              <th>data</th>
              <th class="number">entries/s</th>
              <th class="number">entries</th>
              <th class="number">lost</th>
            </tr>
          </thead>
          <tbody>
            {sources.map((source) => (
              <SourceRow source={source} key={source.entry.path + source.entry.name} />
            ))}
          </tbody>
        </table>
      </div>
      {reading.value !== null && sources.length === 0 && (
        <p class="warn">The configuration has no source: nothing is read from any board.</p>
      )}
      <Freshness reading={reading} intervalMs={1_000} />
    </section>
  );
}

const pulseClass: Record<Pulse["state"], string> = {
  quiet: "alarm",
  flowing: "good",
  waiting: "faint",
  unknown: "warn",
};

function SourceRow(props: { source: Source }): preact.JSX.Element {
  const { entry, flow, board, endpoint } = props.source;
  const reading = account.value;
  const pulse = isKnown(reading) ? pulseOf(flow, reading.heardAt) : unknownPulse;
  const loss = lossOf(entry, flow, reading.heardAt, timeOfDayOf);
  const lossClass = loss === null ? "" : loss.isNow && isKnown(reading) ? "alarm" : "warn";
  return (
    <tr data-test={`source-${entry.name}`}>
      <td title={endpoint}>{board}</td>
      <td>{entry.name}</td>
      <td class={pulseClass[pulse.state]} data-test="pulse">
        {pulse.text}
      </td>
      <td class="number">{flow?.rate == null || !isKnown(reading) ? "–" : short(flow.rate)}</td>
      <td class="number" data-test="received" title={whole(entry.received)}>{whole(entry.received)}</td>
      <td class={`number ${lossClass}`} title={loss?.text} data-test="lost">{whole(loss?.count ?? 0)}</td>
    </tr>
  );
}

function sourcesOf(ledger: Ledger, flows: Flow[]): Source[] {
  const shapes = new Map((blocks.value.value ?? []).map((block) => [`${block.path} ${block.name}`, block.shape]));
  const text = (value: unknown): string => (typeof value === "string" ? value : "");
  return ledger.entries
    .map((entry, i) => {
      const shape = shapes.get(`${entry.path} ${entry.name}`) ?? {};
      return { entry, flow: flows[i], board: text(shape["board"]), endpoint: text(shape["endpoint"]) };
    })
    .filter(({ entry }) => entry.type === "source");
}
