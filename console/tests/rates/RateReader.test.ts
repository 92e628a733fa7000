import { afterEach, beforeEach, expect, test, vi } from "vitest";
import type { Answerer } from "../../src/server/Server";
import { type KnownRates, RateReader } from "../../src/views/rates/RateReader";

beforeEach(() => void vi.useFakeTimers());
afterEach(() => void vi.useRealTimers());

const answerOf = (time: number): object => ({
  timestamp: time,
  rates_in: [1],
  rates_out: [1],
  counts_in: [time],
  counts_out: [time],
});

/** A server with a record a second, from 1 on, and the last ten of them as its history. */
class Recorder implements Answerer {
  now = 5;
  historiesAsked = 0;

  async ask(_: string, query: object): Promise<string> {
    const [{ source }] = (query as { args: [{ source: string }] }).args;
    if (source === "immediate") {
      return JSON.stringify(answerOf(this.now));
    }
    ++this.historiesAsked;
    const length = Math.min(10, this.now);
    return JSON.stringify({ data: Array.from({ length }, (_, i) => answerOf(this.now - i)) });
  }
}

const recorder = (): [Recorder, (seconds: number, isHidden?: boolean) => Promise<KnownRates>] => {
  const server = new Recorder();
  const reader = new RateReader(server, "rates");
  const readAfter = (seconds: number, isHidden = false): Promise<KnownRates> => {
    vi.advanceTimersByTime(1000 * seconds);
    server.now += seconds;
    return reader.read(isHidden);
  };
  return [server, readAfter];
};
const times = ({ records }: KnownRates): number[] => records.map(({ timestamp }) => timestamp);

test("the history is asked for once, and then the latest record alone", async () => {
  const [server, readAfter] = recorder();
  expect(times(await readAfter(0))).toEqual([1, 2, 3, 4, 5]);
  expect(times(await readAfter(1))).toEqual([1, 2, 3, 4, 5, 6]);
  expect(times(await readAfter(2))).toEqual([1, 2, 3, 4, 5, 6, 8]);
  expect(server.historiesAsked).toBe(1);
});

test("what was missed while the page was hidden is there when it is looked at again", async () => {
  const [server, readAfter] = recorder();
  await readAfter(0);
  await readAfter(4, true);
  await readAfter(4, true);
  expect(server.historiesAsked).toBe(1);
  expect(times(await readAfter(1))).toEqual([1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14]);
  expect(server.historiesAsked).toBe(2);
});

test("what was missed without a server is there afterwards, as far as its history goes", async () => {
  const [, readAfter] = recorder();
  await readAfter(0);
  expect(times(await readAfter(20))).toEqual([1, 2, 3, 4, 5, 16, 17, 18, 19, 20, 21, 22, 23, 24, 25]);
});

test("a history without anything new makes no record look new", async () => {
  const [server, readAfter] = recorder();
  const { newestAt } = await readAfter(0);
  server.now -= 9;
  expect((await readAfter(9)).newestAt).toBe(newestAt);
});
