import { inUnits } from "./support/reading";
import { expect, test } from "./support/test";

interface Trace {
  data: number[];
}

interface Rates {
  rates_in: number[];
  rates_out: number[];
}

const inMain = (selector: string): string => `main ${selector}`;

test("every channel of the rate counters has its row and its name", async ({
  acquisition: _,
  site,
  page,
  client,
}) => {
  await page.goto(`${site.url}#/rates`);
  const path = "processing/0/filter_chain/rates1/chain/rates1";
  await page.locator(inMain("[data-test=rates] tbody tr")).first().waitFor();
  const { channel_map: names } = await client.sink<{ channel_map: string[] }>(path, { cmd: "get_channel_map" });
  const { rates_in: rates } = await client.sink<Rates>(path, { cmd: "get_data", source: "immediate" });
  const rows = page.locator(inMain("[data-test=rates] tbody tr th"));
  expect(rates).toHaveLength(names.length);
  await expect.poll(async () => (await rows.allInnerTexts()).map((text) => text.split(/\s/)[0])).toEqual(names);
});

test("the rates since the start are those of the latest record", async ({
  acquisition: _,
  site,
  page,
  client,
}) => {
  await page.goto(`${site.url}#/rates?over=start`);
  await page.locator(inMain("[data-test=rates] tbody tr")).first().waitFor();
  await client.stopBoards();
  const path = "processing/0/filter_chain/rates1/chain/rates1";
  const latest = { cmd: "get_data", source: "immediate" };
  const { rates_in: ins, rates_out: outs } = await client.sink<Rates>(path, latest);
  for (const [channel, rate] of ins.entries()) {
    const cells = page.locator(inMain(`[data-test=rate-${channel}] td.number`));
    await expect.poll(async () => isNear(inUnits(await cells.first().innerText()), rate)).toBe(true);
    await expect.poll(async () => isNear(inUnits(await cells.last().innerText()), outs[channel]!)).toBe(true);
  }
});

/** Three digits are shown. */
function isNear(shown: number, rate: number): boolean {
  return Math.abs(shown - rate) <= 0.006 * Math.abs(rate);
}

test("the oscilloscope's traces are the server's, sample by sample", async ({
  acquisition: _,
  site,
  page,
  client,
}) => {
  await page.goto(`${site.url}#/scope?ch=0-2`);
  const traces = async (): Promise<number[][]> =>
    (JSON.parse(await client.ask("scope1", { cmd: "require_data" })) as Trace[]).map(({ data }) => data);
  const values = page.locator("[data-test=scope-traces] [data-test=value]");
  // An analog and three digital ones of each channel.
  await expect.poll(() => values.count()).toBe(12);
  await expect.poll(async () => (await traces()).flat().some((sample) => sample > 1)).toBe(true);
  await client.stopBoards();
  const expected = await traces();
  await page.locator("[data-test=scope-picture]").click();
  for (const key of ["", "ArrowRight", "ArrowRight"]) {
    await (key === "" ? Promise.resolve() : page.keyboard.press(key));
    const cursor = page.locator("[data-test=scope-cursor]");
    await expect.poll(async () => {
      const sample = Number(/sample (\d+)/.exec(await cursor.innerText())?.[1] ?? NaN);
      const shown = (await values.allInnerTexts()).map(Number);
      const isShown = (trace: number[], i: number): boolean => Math.abs(trace[sample]! - shown[i]!) < 1e-6;
      return shown.length === expected.length && expected.every(isShown);
    }).toBe(true);
  }
});
