import "./chain.css";
import { useMemo, useRef } from "preact/hooks";
import { parameter, setParameter } from "../../app/route";
import { account, type Account, blocks } from "../../app/state";
import type { Block } from "../../model/blocks";
import type { Reading } from "../../server/poll";
import { Freshness } from "../common/Freshness";
import { BlockPanel } from "./BlockPanel";
import { ChainPicture } from "./ChainPicture";
import { type Graph, graphOf } from "./graph";
import { entriesOf, trafficOf } from "./traffic";

/** More would be no picture. */
const maxBlocks = 1000;

/** What the configuration made, and what flows through it. */
export function ChainView(): preact.JSX.Element {
  const known = blocks.value.value;
  return (
    <div class="split chain-view">
      {known === null ? (
        <p class="faint">Waiting for the list of blocks …</p>
      ) : known.length === 0 ? (
        <p data-test="no-blocks">
          The configuration makes no block. Add boards to its "Hardware" and chains of blocks to its "processing",
          then start the server anew.
        </p>
      ) : (
        <Chain all={known} />
      )}
    </div>
  );
}

function Chain({ all }: { all: Block[] }): preact.JSX.Element {
  const text = JSON.stringify(all.slice(0, maxBlocks));
  const graph = useMemo(() => graphOf(all.slice(0, maxBlocks)), [text]);
  const [before, now] = useLastTwo(account.value);
  const shown = useMemo(() => graph.nodes.flatMap((node) => node.block ?? []), [graph]);
  const entries = now?.value ? entriesOf(shown, now.value.ledger) : [];
  const earlier = before?.value ? entriesOf(shown, before.value.ledger) : null;
  const traffic = trafficOf(graph, entries, earlier, now && before ? (now.heardAt - before.heardAt) / 1000 : 0);
  const chosen = parameter("block");
  return (
    <>
      <div class="stack">
        <div class="row">
          <BlockChooser graph={graph} chosen={chosen} />
          <Freshness reading={account.value} intervalMs={1_000} />
          {now?.value?.ledger.entries.some((entry) => entry.missing !== 0) && (
            <span class="alarm">Records are missing in the account: a fault of the server.</span>
          )}
          {all.length > maxBlocks && (
            <span class="warn">{`Drawn are the first ${maxBlocks} of ${all.length} blocks.`}</span>
          )}
        </div>
        <ChainPicture graph={graph} entries={entries} traffic={traffic} chosen={chosen} onChoose={choose} />
      </div>
      <aside class="stack">
        <Chosen graph={graph} chosen={chosen} entries={entries} account={now?.value ?? null} />
      </aside>
    </>
  );
}

function choose(key: string | null): void {
  setParameter("block", key === "" ? null : key);
}

function BlockChooser({ graph, chosen }: { graph: Graph; chosen: string | null }): preact.JSX.Element {
  return (
    <label>
      Block{" "}
      <select
        data-test="block-chooser"
        value={chosen ?? ""}
        onChange={(event) => choose(event.currentTarget.value)}
      >
        <option value="">none chosen</option>
        {graph.nodes.map((node) => (
          <option key={node.key} value={node.key}>{`${node.name} (${node.block?.type ?? "board"})`}</option>
        ))}
      </select>
    </label>
  );
}

interface ChosenProps {
  graph: Graph;
  chosen: string | null;
  entries: ReturnType<typeof entriesOf>;
  account: Account | null;
}

function Chosen({ graph, chosen, entries, account }: ChosenProps): preact.JSX.Element {
  const index = graph.nodes.findIndex((node) => node.key === chosen);
  const node = graph.nodes[index];
  if (node === undefined) {
    return chosen === null ? (
      <p class="panel faint">
        Press a block, or Enter on it, to see its account. Arrow keys lead from block to block.
      </p>
    ) : (
      <p class="panel alarm" role="alert" data-test="block-gone">
        {`There is no block ${chosen} any more: it was renamed or taken out of the configuration.`}
      </p>
    );
  }
  const entry = entries[index];
  const flow = entry && account?.flows[account.ledger.entries.indexOf(entry)];
  return <BlockPanel node={node} entry={entry} flow={flow} />;
}

/** The reading before the last good one, and that; null where there is none. */
function useLastTwo(reading: Reading<Account>): [Reading<Account> | null, Reading<Account> | null] {
  const pair = useRef<[Reading<Account> | null, Reading<Account> | null]>([null, null]);
  if (reading.value !== null && reading.heardAt !== pair.current[1]?.heardAt) {
    pair.current = [pair.current[1], reading];
  }
  return pair.current;
}
