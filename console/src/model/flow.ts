import { type Entry, type Ledger, lossesOf } from "./ledger";

/** How records move through a block, from the accounts so far. Times are those of performance.now(). */
export interface Flow {
  /** Records received a second; nothing before two accounts are known. */
  rate: number | null;
  /** Records lost a second. */
  lossRate: number | null;
  /** When it was last seen to receive something; the first account's time when never. */
  lastData: number;
  /** Whether it was ever seen to receive something. */
  hasMoved: boolean;
  /** How long it surely received nothing before each of the last times that it did, in ms. */
  pauses: readonly number[];
  /** When it was last seen to lose something; null when never. */
  lastLoss: number | null;
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

const mostPauses = 60;

function knownOf(entry: Entry, at: number, before: Known | undefined): Known {
  const { received } = entry;
  const lost = totalLost(entry);
  // A server that was started anew begins at 0 again.
  if (before === undefined || received < before.received || lost < before.lost) {
    return { at, received, lost, flow: firstFlow(at) };
  }
  const { flow } = before;
  const moved = received > before.received;
  const seconds = (at - before.at) / 1000;
  const rate = (delta: number): number | null => (seconds > 0 ? delta / seconds : null);
  // It may have received something just before this account, or just behind the one before: neither is a pause.
  const pause = before.at - flow.lastData;
  return {
    at,
    received,
    lost,
    flow: {
      rate: rate(received - before.received),
      lossRate: rate(lost - before.lost),
      lastData: moved ? at : flow.lastData,
      hasMoved: moved || flow.hasMoved,
      pauses: moved && flow.hasMoved ? [...flow.pauses, pause].slice(-mostPauses) : flow.pauses,
      lastLoss: lost > before.lost ? at : flow.lastLoss,
    },
  };
}

function firstFlow(at: number): Flow {
  return { rate: null, lossRate: null, lastData: at, hasMoved: false, pauses: [], lastLoss: null };
}

function totalLost(entry: Entry): number {
  return [...lossesOf(entry).values()].reduce((sum, count) => sum + count, 0);
}
