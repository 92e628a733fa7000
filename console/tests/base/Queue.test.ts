import { describe, expect, it } from "vitest";
import { Queue } from "../../src/base/Queue";

describe("A queue", () => {
  it("loses nothing, and does one thing after the other", async () => {
    const queue = new Queue();
    const log: string[] = [];
    const slow = (name: string) => async (): Promise<void> => {
      log.push(`${name} begins`);
      await Promise.resolve();
      log.push(`${name} ends`);
    };
    await Promise.all([queue.add(slow("a")), queue.add(slow("b"))]);
    expect(log).toEqual(["a begins", "a ends", "b begins", "b ends"]);
  });

  it("is busy as long as something waits", async () => {
    const queue = new Queue();
    expect(queue.isBusy).toBe(false);
    const first = queue.add(() => Promise.resolve());
    const second = queue.add(() => Promise.resolve());
    await first;
    expect(queue.isBusy).toBe(true);
    await second;
    expect(queue.isBusy).toBe(false);
  });

  it("is passed by what can't wait, and is busy with it too", async () => {
    const queue = new Queue();
    let end = (): void => undefined;
    const slow = queue.add(() => new Promise((done) => (end = done)));
    let isDone = false;
    await queue.pass(async () => void (isDone = true));
    expect(isDone).toBe(true);
    expect(queue.isBusy).toBe(true);
    end();
    await slow;
    await expect(queue.pass(() => Promise.reject(new Error("no")))).rejects.toThrow("no");
    expect(queue.isBusy).toBe(false);
  });

  it("goes on behind what failed, and tells it", async () => {
    const queue = new Queue();
    const failing = queue.add(() => Promise.reject(new Error("no")));
    let isDone = false;
    const next = queue.add(async () => void (isDone = true));
    await expect(failing).rejects.toThrow("no");
    await next;
    expect(isDone).toBe(true);
    expect(queue.isBusy).toBe(false);
  });
});
