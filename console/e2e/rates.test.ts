import type { Page } from "playwright-core";
import { drawnTexts, fillOf, recordTexts } from "./support/canvas";
import { chainAnswers, fakeServer } from "./support/fakeServer";
import { inUnits } from "./support/reading";
import { expect, test } from "./support/test";

const names = ["A", "B", "C", "D", "E", "F", "G", "H", "T0"];
const [dead, noisy, blocked] = [2, 5, 6] as const;

/** Counts a second of the channels in the second before this one. */
function ratesIn(second: number): number[] {
  const special = new Map<number, number>([[dead, 0], [noisy, 4_000]]);
  return names.map((_, channel) => special.get(channel) ?? 100 + 10 * channel + (second % 4));
}

interface Counted {
  timestamp: number;
  rates_in: number[];
  rates_out: number[];
  counts_in: number[];
  counts_out: number[];
}

/** The record of a second since the start; its timestamps count nanoseconds. */
function recordOf(second: number): Counted {
  const counts = names.map((_, channel) => {
    const seconds = Array.from({ length: second }, (_, i) => ratesIn(i + 1)[channel]!);
    return seconds.reduce((sum, rate) => sum + rate, 0);
  });
  const out = counts.map((count, channel) => (channel === blocked ? 0 : Math.floor(count / 2)));
  const perSecond = (all: number[]): number[] => all.map((count) => count / second);
  return {
    timestamp: second * 1e9,
    rates_in: perSecond(counts),
    rates_out: perSecond(out),
    counts_in: counts,
    counts_out: out,
  };
}

/** A server with a record for each second up to `now`, and the last `depth` of them as its history. */
class FakeRates {
  historiesAsked = 0;
  asked = 0;
  isBroken = false;
  hasNames = true;
  constructor(
    public now: number,
    private readonly depth = 60,
    /** Seconds from one answer to the next; with 0 no record comes any more. */
    public step = 0,
  ) {}

  async serve(page: Page): Promise<void> {
    const block = { type: "rate_counters_sink", name: "rates0", shape: { channels: names } };
    const chain = chainAnswers([block], () => 0);
    await fakeServer(page, (query, route) => {
      const [command] = (query as { args?: { cmd: string; source?: string }[] }).args ?? [];
      return route === "query_by_json" && command !== undefined ? this.answer(command) : chain(query, route);
    });
  }

  private answer({ cmd, source }: { cmd: string; source?: string }): string {
    if (cmd === "get_channel_map") {
      return this.hasNames ? JSON.stringify({ channel_map: names }) : "[]";
    }
    if (source === "immediate") {
      ++this.asked;
      this.now += this.step;
      return this.isBroken ? "nonsense" : JSON.stringify(recordOf(this.now));
    }
    ++this.historiesAsked;
    const length = Math.min(this.depth, this.now);
    return JSON.stringify({ data: Array.from({ length }, (_, i) => recordOf(this.now - i)) });
  }
}

async function open(page: Page, url: string, rates: FakeRates, query = ""): Promise<void> {
  await rates.serve(page);
  await page.goto(`${url}#/rates${query}`);
  await page.locator("[data-test=rates] tbody tr").first().waitFor();
}

const verdictOf = (page: Page) => page.locator("[data-test=rates-verdict]");
const row = (page: Page, channel: number) => page.locator(`[data-test=rate-${channel}]`);

/** Rates are shown with three digits or more. */
function expectNear(shown: number, rate: number): void {
  expect(Math.abs(shown - rate)).toBeLessThanOrEqual(0.006 * Math.abs(rate));
}

test("dead, blocked and noisy channels are named, and marked by words in their rows", async ({ site, page }) => {
  await open(page, site.url, new FakeRates(30, 60, 1));
  const verdict = verdictOf(page);
  await expect.poll(() => verdict.innerText()).toBe("1 dead: C; 1 blocked: G; 1 noisy: F");
  expect(await verdict.getAttribute("class")).toBe("alarm");
  const marks = await page.locator("[data-test=rates] tbody th").allInnerTexts();
  expect(marks.map((text) => text.replace(/\s+/g, " ").trim())).toEqual([
    "A", "B", "C ✕ dead", "D", "E", "F ▲ noisy", "G ⊘ blocked", "H", "T0",
  ]);
});

test("a verdict on rates that aren't those of now says so", async ({ site, page }) => {
  const rates = new FakeRates(30, 60, 1);
  await page.clock.install();
  await open(page, site.url, rates);
  const shown = async (): Promise<(string | null)[]> => {
    const verdict = verdictOf(page);
    return [await verdict.getAttribute("class"), await verdict.innerText()];
  };
  const text = "1 dead: C; 1 blocked: G; 1 noisy: F";
  await expect.poll(shown).toEqual(["alarm", text]);
  rates.isBroken = true;
  await expect.poll(shown).toEqual(["warn", `By the last rates: ${text}`]);
  rates.isBroken = false;
  await expect.poll(shown).toEqual(["alarm", text]);
  rates.step = 0;
  await page.clock.fastForward(6_000);
  await expect.poll(shown).toEqual(["warn", `By the last rates: ${text}`]);
  rates.step = 1;
  await expect.poll(shown).toEqual(["alarm", text]);
});

test("names of channels that can't be read are missed aloud, and found later", async ({ site, page }) => {
  const rates = new FakeRates(30, 60, 1);
  rates.hasNames = false;
  await open(page, site.url, rates);
  const fault = page.locator("[data-test=names-fault]");
  await expect.poll(() => fault.innerText()).toMatch(/^The names of the channels can't be read: ./);
  expect(await row(page, 1).locator("th").innerText()).toBe("Channel 1");
  rates.hasNames = true;
  await expect.poll(() => row(page, 1).locator("th").innerText()).toBe("B");
  expect(await fault.count()).toBe(0);
});

test("rates since the start are called so while the unit of timestamps isn't known", async ({ site, page }) => {
  const rates = new FakeRates(2, 1); // one record tells nothing of the unit
  await open(page, site.url, rates, "?over=10");
  const note = page.locator("[data-test=rates-span]");
  await expect.poll(() => note.allInnerTexts()).toEqual([expect.stringContaining("since the server's start")]);
  rates.now = 12;
  await expect.poll(() => note.count()).toBe(0);
});

test("the bars and their numbers are the counts between two records", async ({ site, page }) => {
  await open(page, site.url, new FakeRates(30), "?over=10");
  const [from, to] = [recordOf(20), recordOf(30)];
  const rate = (counts: "counts_in" | "counts_out", channel: number): number =>
    (to[counts][channel]! - from[counts][channel]!) / 10;
  const most = rate("counts_in", noisy);
  const widths = (channel: number): Promise<number[]> =>
    row(page, channel)
      .locator(".bar")
      .evaluateAll((bars) => bars.map((bar) => bar.getBoundingClientRect().width));
  const [longest] = await widths(noisy);
  for (const channel of names.keys()) {
    const shown = await row(page, channel).locator("td.number").allInnerTexts();
    const drawn = await widths(channel);
    for (const [i, counts] of (["counts_in", "counts_out"] as const).entries()) {
      expectNear(inUnits(shown[i]!), rate(counts, channel));
      const width = (longest! * rate(counts, channel)) / most;
      expect(Math.abs(drawn[i]! - width)).toBeLessThan(2.5); // the borders of an empty bar have a width
    }
  }
});

/** What the history says at a part of its width. */
async function historyAt(page: Page, part: number): Promise<{ x: number; values: number[] }> {
  const over = page.locator(".rates .u-over");
  const { width, height } = (await over.boundingBox())!;
  await over.hover({ position: { x: part * (width - 1), y: height / 2 } });
  const readout = page.locator(".rates [data-test=readout]");
  await expect.poll(() => readout.innerText()).toMatch(/ s: /);
  const [x = "", values = ""] = (await readout.innerText()).split(" s: ");
  return { x: Number(x), values: values.split(", ").map((text) => inUnits(text.replace(/^\S+ (in|out) /, ""))) };
}

test("the history's values are the rates between the records that were answered", async ({ site, page }) => {
  await open(page, site.url, new FakeRates(40), "?over=2&ch=0,2,5");
  for (const part of [0.11, 0.5, 0.73]) {
    const { x, values } = await historyAt(page, part);
    const second = 40 + x;
    const [from, to] = [recordOf(second - 2), recordOf(second)];
    const expected = [0, dead, noisy].flatMap((channel) => [
      (to.counts_in[channel]! - from.counts_in[channel]!) / 2,
      (to.counts_out[channel]! - from.counts_out[channel]!) / 2,
    ]);
    expect(values).toHaveLength(expected.length);
    values.forEach((value, i) => expectNear(value, expected[i]!));
  }
});

test("what was missed while hidden is filled in from the history of the server", async ({ site, page }) => {
  const rates = new FakeRates(20);
  await page.clock.install();
  await open(page, site.url, rates, "?over=2&ch=0");
  await page.evaluate(() => {
    Object.defineProperty(document, "hidden", { configurable: true, get: () => true });
    document.dispatchEvent(new Event("visibilitychange"));
  });
  const asked = rates.asked;
  rates.now = 55;
  await page.clock.fastForward(30_000);
  await expect.poll(() => rates.asked).toBeGreaterThan(asked);
  expect(rates.historiesAsked).toBe(1);
  await page.evaluate(() => {
    Object.defineProperty(document, "hidden", { configurable: true, get: () => false });
    document.dispatchEvent(new Event("visibilitychange"));
  });
  await expect.poll(() => rates.historiesAsked).toBe(2);
  await expect.poll(async () => (await historyAt(page, 0.8)).x).toBeLessThan(-10);
  const { x, values } = await historyAt(page, 0.7); // within what was missed
  const second = 55 + x;
  expect(second).toBeGreaterThan(25);
  expect(second).toBeLessThan(55);
  const [from, to] = [recordOf(second - 2), recordOf(second)];
  expectNear(values[0]!, (to.counts_in[0]! - from.counts_in[0]!) / 2);
});

test("nothing is drawn over a time whose records the server has no more", async ({ site, page }) => {
  const rates = new FakeRates(30, 20);
  await page.clock.install();
  await open(page, site.url, rates, "?over=2&ch=0");
  rates.now = 130;
  await page.clock.fastForward(10_000);
  await expect.poll(() => rates.historiesAsked).toBe(2);
  // The first record after the gap, at 111 s, has no rate, as what came before it is unknown; the next one has.
  const part = (second: number): number => (second + 0.5 - 12) / (130 - 12);
  await expect.poll(() => historyAt(page, part(111))).toEqual({ x: -19, values: [NaN, NaN] });
  const { values } = await historyAt(page, part(112));
  expectNear(values[0]!, recordOf(112).counts_in[0]! - recordOf(111).counts_in[0]!);
});

test("a rate of 0 is seen on a logarithmic history, at a foot that says so", async ({ site, page }) => {
  await recordTexts(page);
  await open(page, site.url, new FakeRates(30), `?over=10&log=1&ch=${dead}`);
  const { values } = await historyAt(page, 0.5);
  expect(values).toEqual([0, 0]);
  const label = async (): Promise<boolean> =>
    (await drawnTexts(page)).some(({ text }) => text === "counts per second; at the foot: 0.5 or less");
  await expect.poll(label).toBe(true);
  const inked = await page.locator(".rates .u-wrap canvas").evaluate((canvas: HTMLCanvasElement, colour) => {
    const { data } = canvas.getContext("2d")!.getImageData(0, 0, canvas.width, canvas.height);
    const isCurve = (i: number): boolean => colour.every((part, k) => data[i + k] === part);
    return Array.from({ length: data.length / 4 }, (_, pixel) => 4 * pixel).filter(isCurve).length;
  }, await fillOf(row(page, dead).locator(".swatch")));
  expect(inked).toBeGreaterThan(200); // a line across the plot
});
