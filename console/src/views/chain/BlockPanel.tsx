import { short, whole } from "../../base/format";
import type { Flow } from "../../model/flow";
import { type Entry, lossesOf } from "../../model/ledger";
import type { Node } from "./graph";
import { shapeRows, wordsOf } from "./words";

interface BlockPanelProps {
  node: Node;
  entry: Entry | undefined;
  flow: Flow | undefined;
}

/** All that is known of a block. */
export function BlockPanel({ node, entry, flow }: BlockPanelProps): preact.JSX.Element {
  const block = node.block;
  if (block === null) {
    return (
      <section class="panel" data-test="block-panel">
        <h2>{node.name}</h2>
        <p class="faint">A board. What it delivers stands on the edges to its sources.</p>
      </section>
    );
  }
  return (
    <section class="panel" data-test="block-panel">
      <h2>{node.name}</h2>
      <p class="faint">{block.type}</p>
      {block.path !== "" && <p class="faint chain-path">{block.path}</p>}
      {entry === undefined ? (
        <p class="faint">It handles no records, so it has no account.</p>
      ) : (
        <AccountOf entry={entry} rate={flow?.rate ?? null} />
      )}
      <Links node={node} />
      <Shape rows={shapeRows(block.shape)} />
    </section>
  );
}

function AccountOf({ entry, rate }: { entry: Entry; rate: number | null }): preact.JSX.Element {
  const losses = lossesOf(entry);
  const fullQueue = losses.get("full_queue") ?? 0;
  return (
    <>
      <h3>Records since the server started</h3>
      <dl class="figures" data-test="account">
        <Figure name="received" value={entry.received} />
        {[...entry.became].map(([fate, count]) => (
          <Figure key={fate} name={wordsOf(fate)} value={count} isLoss={losses.has(fate)} />
        ))}
        <Figure name="waiting inside" value={entry.waiting} />
        <Figure name="missing" value={entry.missing} isLoss={entry.missing !== 0} />
        {entry.outputs.length > 0 && <Figure name="passed on" value={entry.made} />}
        <Figure name={wordsOf("full_queue")} value={fullQueue} isLoss={fullQueue > 0} />
        <dt>received a second</dt>
        <dd>{rate === null ? "–" : short(rate)}</dd>
      </dl>
    </>
  );
}

function Figure(props: { name: string; value: number; isLoss?: boolean }): preact.JSX.Element {
  const { name, value, isLoss = false } = props;
  return (
    <>
      <dt class={isLoss ? "alarm" : undefined}>{isLoss ? `⚠ ${name}` : name}</dt>
      <dd class={isLoss ? "alarm" : undefined} data-figure={name} data-value={value}>{whole(value)}</dd>
    </>
  );
}

function Links({ node }: { node: Node }): preact.JSX.Element | null {
  const links = node.block?.links ?? [];
  return links.length === 0 ? null : (
    <>
      <h3>Inputs</h3>
      <ul>
        {links.map((link, i) => (
          <li key={i} class={link.from === "" ? "warn" : undefined}>
            {link.from === ""
              ? `input ${i}: linked to nothing; name a block in its "sources" in the configuration`
              : `input ${i}: output ${link.pin} of ${link.from}`}
          </li>
        ))}
      </ul>
    </>
  );
}

function Shape({ rows }: { rows: [string, string][] }): preact.JSX.Element | null {
  return rows.length === 0 ? null : (
    <>
      <h3>Set to</h3>
      <dl class="figures">
        {rows.map(([name, value]) => (
          <>
            <dt>{name}</dt>
            <dd>{value}</dd>
          </>
        ))}
      </dl>
    </>
  );
}
