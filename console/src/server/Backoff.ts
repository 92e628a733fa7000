const firstMs = 1_000;
const longestMs = 10_000;

/**
 * How long a connection that failed is left alone: 1, 2, 4, 8 and then 10 s, each by up to a quarter more or
 * less, so that consoles which lost the server together don't all come back together.
 */
export class Backoff {
  private failures = 0;
  private until = 0;

  constructor(private readonly random: () => number = Math.random) {}

  failed(): void {
    const rest = Math.min(longestMs, firstMs * 2 ** this.failures++);
    this.until = performance.now() + rest * (0.75 + 0.5 * this.random());
  }

  /** It works, or may work: the next failure is a first one. */
  clear(): void {
    this.failures = 0;
    this.until = 0;
  }

  get hasFailed(): boolean {
    return this.failures > 0;
  }

  get isResting(): boolean {
    return performance.now() < this.until;
  }
}
