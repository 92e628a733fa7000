import { getRateHistory, getRates, type Rates } from "../../server/queries";
import type { Answerer } from "../../server/Server";
import { RateLog } from "./RateLog";

export interface KnownRates {
  /** Oldest first. */
  records: readonly Rates[];
  /** Another number whenever the records are others. */
  version: number;
  /** When the last of them was first seen, as performance.now() tells. */
  newestAt: number;
}

/** After a pause as long as a few records, some were missed. */
const pauseMs = 3_000;

/**
 * Reads the records of a block: the server's history, as it may be long, only at first and after a pause; else the
 * latest one. A hidden page reads seldom: what it missed is put in when it is looked at again.
 */
export class RateReader {
  private readonly log = new RateLog();
  private newestAt = performance.now();
  /** When all records up to then were known; nothing at first. */
  private completeAt = -Infinity;

  constructor(
    private readonly server: Answerer,
    private readonly path: string,
  ) {}

  async read(isHidden: boolean): Promise<KnownRates> {
    const before = this.newest;
    const isPaused = performance.now() - this.completeAt > pauseMs;
    if (isPaused && (!isHidden || this.log.records.length === 0)) {
      this.log.fill(await getRateHistory(this.server, this.path));
    }
    const latest = await getRates(this.server, this.path);
    if (latest !== null) {
      this.log.add(latest);
    }
    const now = performance.now();
    this.completeAt = isHidden ? this.completeAt : now;
    this.newestAt = this.newest === before ? this.newestAt : now;
    return { records: this.log.records, version: this.log.version, newestAt: this.newestAt };
  }

  private get newest(): number | undefined {
    return this.log.records[this.log.records.length - 1]?.timestamp;
  }
}
