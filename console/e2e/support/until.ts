const patienceMs = 60_000;

/** Waits until the condition holds; fails with `what` when it never does. */
export async function until(what: string, condition: () => boolean | Promise<boolean>): Promise<void> {
  const end = Date.now() + patienceMs;
  while (!(await condition())) {
    if (Date.now() > end) {
      throw new Error(`Waited in vain: ${what}`);
    }
    await new Promise((resolve) => setTimeout(resolve, 50));
  }
}
