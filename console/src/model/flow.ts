import { type Entry, type Ledger, lossesOf } from "./ledger";

/** How records move through a block, from the last two accounts. */
export interface Flow {
  /** Records received a second; nothing before two accounts are known. */
  rate: number | null;
  /** Records lost a second. */
  lossRate: number | null;
  /** When it was last seen to receive something, as Date.now() tells; the first account's time when never. */
  lastData: number;
  /** Whether it was ever seen to receive something. */
  hasMoved: boolean;
}

interface Known {
  at: number;
  received: number;
  lost: number;
  flow: Flow;
}

/** Follows the accounts of all blocks. Blocks are told apart by name and place. */
export class FlowTracker {
  private known = new Map<string, Known>();

  /** The flows of the ledger's entries, by their order. */
  add(ledger: Ledger, at: number): Flow[] {
    const next = new Map<string, Known>();
    const flows = ledger.entries.map((entry, index) => {
      const key = `${index} ${entry.name}`;
      const known = knownOf(entry, at, this.known.get(key));
      next.set(key, known);
      return known.flow;
    });
    this.known = next;
    return flows;
  }
}

function knownOf(entry: Entry, at: number, before: Known | undefined): Known {
  const lost = totalLost(entry);
  // A server that was started anew begins at 0 again.
  if (before === undefined || entry.received < before.received || lost < before.lost) {
    return { at, received: entry.received, lost, flow: { rate: null, lossRate: null, lastData: at, hasMoved: false } };
  }
  const moved = entry.received > before.received;
  const seconds = (at - before.at) / 1000;
  const rate = (delta: number): number | null => (seconds > 0 ? delta / seconds : null);
  const flow: Flow = {
    rate: rate(entry.received - before.received),
    lossRate: rate(lost - before.lost),
    lastData: moved ? at : before.flow.lastData,
    hasMoved: moved || before.flow.hasMoved,
  };
  return { at, received: entry.received, lost, flow };
}

function totalLost(entry: Entry): number {
  return [...lossesOf(entry).values()].reduce((sum, count) => sum + count, 0);
}
