import type { Rates } from "../../server/queries";

/** Counts of this many channels and records are kept. */
const mostCounts = 500_000;
const mostRecords = 3_600;

/** The records since the counters last began at 0, oldest first. Counters that fall begin anew. */
export class RateLog {
  private kept: Rates[] = [];

  /** True when it is new. */
  add(record: Rates): boolean {
    const last = this.kept[this.kept.length - 1];
    if (last !== undefined && record.timestamp === last.timestamp) {
      return false;
    }
    if (last !== undefined && !follows(last, record)) {
      this.kept = [];
    }
    const room = Math.min(mostRecords, Math.max(2, Math.floor(mostCounts / Math.max(1, record.countsIn.length))));
    this.kept = [...this.kept.slice(Math.max(0, this.kept.length + 1 - room)), record];
    return true;
  }

  /** Never changed afterwards. */
  get records(): readonly Rates[] {
    return this.kept;
  }
}

function follows(before: Rates, after: Rates): boolean {
  return (
    after.timestamp > before.timestamp &&
    after.countsIn.length === before.countsIn.length &&
    after.countsIn.every((count, i) => count >= before.countsIn[i]!) &&
    after.countsOut.every((count, i) => count >= (before.countsOut[i] ?? 0))
  );
}
