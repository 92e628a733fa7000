import type { Rates } from "../../server/queries";

/** Counts of this many channels and records are kept. */
const mostCounts = 500_000;
const mostRecords = 3_600;

/** The records since the counters last began at 0, oldest first. Counters that fall begin anew. */
export class RateLog {
  private kept: Rates[] = [];
  private changes = 0;

  /** True when it is new. */
  add(record: Rates): boolean {
    const last = this.kept[this.kept.length - 1];
    if (last !== undefined && record.timestamp === last.timestamp) {
      return false;
    }
    if (last !== undefined && !follows(last, record)) {
      this.kept = [];
    }
    this.kept.push(record);
    this.cut(Math.floor(mostCounts / Math.max(1, record.countsIn.length)));
    ++this.changes;
    return true;
  }

  /** Puts in what was missed, from the server's own records, oldest first. */
  fill(history: readonly Rates[]): void {
    const last = this.kept[this.kept.length - 1];
    const [first] = history;
    if (last === undefined || first === undefined || first.timestamp > last.timestamp) {
      history.forEach((record) => this.add(record));
      return;
    }
    // Of the same counting, if it knows our last record; else the server was started anew.
    const isSame = history.some((record) => record.timestamp === last.timestamp && sameCounts(record, last));
    this.kept = isSame ? this.kept.filter(({ timestamp }) => timestamp < first.timestamp) : [];
    history.forEach((record) => this.add(record));
    ++this.changes;
  }

  /** Changes as time goes on. */
  get records(): readonly Rates[] {
    return this.kept;
  }

  /** Another number whenever the records are others. */
  get version(): number {
    return this.changes;
  }

  // Many at a time: each record that is cut by itself would move all others.
  private cut(room: number): void {
    const most = Math.min(mostRecords, Math.max(2, room));
    if (this.kept.length >= most + Math.max(1, most >> 3)) {
      this.kept.splice(0, this.kept.length - most);
    }
  }
}

function sameCounts(one: Rates, other: Rates): boolean {
  const isSame = (count: number, i: number): boolean => count === other.countsIn[i];
  return one.countsIn.length === other.countsIn.length && one.countsIn.every(isSame);
}

function follows(before: Rates, after: Rates): boolean {
  return (
    after.timestamp > before.timestamp &&
    after.countsIn.length === before.countsIn.length &&
    after.countsIn.every((count, i) => count >= before.countsIn[i]!) &&
    after.countsOut.every((count, i) => count >= (before.countsOut[i] ?? 0))
  );
}
