/** Does one thing after the other, in their order; that one fails stops no other. */
export class Queue {
  private last: Promise<unknown> = Promise.resolve();
  private length = 0;

  /** Ends when it is done, and fails as it does. */
  add(what: () => Promise<void>): Promise<void> {
    ++this.length;
    const done = this.last.then(what).finally(() => --this.length);
    this.last = done.catch(() => undefined);
    return done;
  }

  /** Does it at once, past those that wait. */
  pass(what: () => Promise<void>): Promise<void> {
    ++this.length;
    return what().finally(() => --this.length);
  }

  get isBusy(): boolean {
    return this.length > 0;
  }
}
