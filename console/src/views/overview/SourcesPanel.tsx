import { short, whole } from "../../base/format";
import { account, blocks, now } from "../../app/state";
import type { Flow } from "../../model/flow";
import { type Entry, type Ledger, lossesOf } from "../../model/ledger";
import { pulseOf } from "../../model/silence";
import { Freshness } from "../common/Freshness";

interface Source {
  entry: Entry;
  flow: Flow | undefined;
  board: string;
  endpoint: string;
}

/** Whether data flow, source by source, in the order of their boards. */
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

function SourceRow(props: { source: Source }): preact.JSX.Element {
  const { entry, flow, board, endpoint } = props.source;
  const pulse = pulseOf(flow, now.value);
  const lost = [...lossesOf(entry).values()].reduce((sum, count) => sum + count, 0);
  return (
    <tr data-test={`source-${entry.name}`}>
      <td title={endpoint}>{board}</td>
      <td>{entry.name}</td>
      <td class={pulse.state === "quiet" ? "alarm" : pulse.state === "flowing" ? "good" : "faint"} data-test="pulse">
        {pulse.text}
      </td>
      <td class="number">{flow?.rate == null ? "–" : short(flow.rate)}</td>
      <td class="number" data-test="received" title={whole(entry.received)}>{whole(entry.received)}</td>
      <td class={`number ${lost > 0 ? "alarm" : ""}`}>{whole(lost)}</td>
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
