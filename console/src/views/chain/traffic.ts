import { short } from "../../base/format";
import type { Block } from "../../model/blocks";
import type { Entry, Ledger } from "../../model/ledger";
import type { Edge, Graph } from "./graph";

/** What moves on an edge. Rates are null before two accounts are known. */
export interface Traffic {
  /** Records a second. */
  rate: number | null;
  /** Records in the queue now. */
  waiting: number;
  /** Records that a full queue refused since the server started. */
  dropped: number;
  dropRate: number | null;
  /** Records wait, and none was taken since the account before. */
  standsStill: boolean;
}

/** The ledger's entry of each block; nothing for one that handles no records. */
export function entriesOf(blocks: readonly Block[], ledger: Ledger): (Entry | undefined)[] {
  const found = new Map<string, Entry[]>();
  for (const entry of ledger.entries) {
    const alike = found.get(keyOf(entry));
    if (alike === undefined) {
      found.set(keyOf(entry), [entry]);
    } else {
      alike.push(entry);
    }
  }
  return blocks.map((block) => found.get(keyOf(block))?.shift());
}

function keyOf(of: { path: string; name: string; type: string }): string {
  return JSON.stringify([of.path, of.name, of.type]);
}

type Entries = readonly (Entry | undefined)[];

/** The traffic of the graph's edges; null on those that carry no records, and where the account doesn't tell. */
export function trafficOf(
  graph: Graph,
  entries: Entries,
  before: Entries | null,
  seconds: number,
): (Traffic | null)[] {
  return graph.edges.map((edge) => {
    const now = countsOf(edge, entries);
    return now && between(now, before && countsOf(edge, before), seconds);
  });
}

interface Counts {
  taken: number;
  waiting: number;
  dropped: number;
}

/** A board's records are counted by the source that reads it. */
function countsOf(edge: Edge, entries: Entries): Counts | null {
  const to = entries[edge.to];
  if (edge.input < 0) {
    return to?.type === "source" ? { taken: to.received, waiting: 0, dropped: 0 } : null;
  }
  const input = to?.inputs[edge.input];
  if (input === undefined) {
    return null;
  }
  const queue = entries[edge.from]?.outputs[edge.pin];
  return { taken: input.taken, waiting: queue?.waiting ?? 0, dropped: queue?.dropped ?? 0 };
}

function between(now: Counts, before: Counts | null, seconds: number): Traffic {
  // A server that was started anew begins at 0 again.
  const isKnown = before !== null && seconds > 0 && now.taken >= before.taken && now.dropped >= before.dropped;
  return {
    rate: isKnown ? (now.taken - before.taken) / seconds : null,
    waiting: now.waiting,
    dropped: now.dropped,
    dropRate: isKnown ? (now.dropped - before.dropped) / seconds : null,
    standsStill: isKnown && now.taken === before.taken && before.waiting > 0 && now.waiting >= before.waiting,
  };
}

/** A queue that holds what comes in so many seconds is behind. */
const behindSeconds = 2;

/** What is wrong on an edge, in words; null when nothing is. */
export function troubleOf(traffic: Traffic): string | null {
  const { rate, waiting, dropped, dropRate, standsStill } = traffic;
  if (dropRate !== null && dropRate > 0) {
    return `drops ${short(dropRate)}/s`;
  }
  if (standsStill) {
    return `stuck, ${short(waiting)} wait`;
  }
  if (rate !== null && rate > 0 && waiting / rate >= behindSeconds) {
    return `${short(waiting)} wait, ${short(waiting / rate)} s`;
  }
  return dropped > 0 ? `${short(dropped)} dropped` : null;
}

/** Of an edge's line: wider by the same for each ten times the rate. */
export function widthOf(rate: number | null): number {
  return rate === null || rate <= 0 ? 1.5 : Math.min(12, 2 + 1.2 * Math.log10(1 + rate));
}
