import { cursorAt, openSpectra, peaksAt, serveCounts, totals } from "./support/histograms";
import { countSomething, sumOf } from "./support/reading";
import { expect, test } from "./support/test";
import type { Client } from "./support/question";

interface Answer {
  data: number[];
}

const askedTotals = async (client: Client, path: string, channels: number[]): Promise<number[]> =>
  (await client.sink<Answer[]>(path, { cmd: "get_data", channels })).map(({ data }) => sumOf(data));

test("the spectra of two blocks hold what the server counted", async ({ acquisition: _, site, page, client }) => {
  await page.goto(`${site.url}#/spectra?show=${encodeURIComponent("spectrum0@100,106;spectrum1@0-2")}`);
  await countSomething(page, page.locator("[data-test=curves] [data-test=total]").last());
  await expect.poll(() => totals(page)).toHaveLength(5);
  await expect.poll(() => totals(page)).toEqual([
    ...(await askedTotals(client, "processing/0/filter_chain/board0/chain/spectrum0", [100, 106])),
    ...(await askedTotals(client, "processing/0/filter_chain/board1/chain/spectrum1", [0, 1, 2])),
  ]);
});

test("the time distributions hold what the server counted", async ({ acquisition: _, site, page, client }) => {
  await page.goto(`${site.url}#/times?show=${encodeURIComponent("times1@0-3")}`);
  await expect.poll(async () => sumOf(await totals(page))).toBeGreaterThan(0);
  await client.stopBoards();
  const path = "processing/0/filter_chain/board1/chain/times1";
  await expect.poll(() => totals(page)).toEqual(await askedTotals(client, path, [0, 1, 2, 3]));
});

test("a reset empties what is shown", async ({ acquisition: _, site, page }) => {
  await page.goto(`${site.url}#/spectra?show=${encodeURIComponent("spectrum1@0")}`);
  await countSomething(page, page.locator("[data-test=curves] [data-test=total]"));
  await page.getByRole("button", { name: "Reset", exact: true }).click();
  await page.locator("[data-test=confirm-action]").click();
  await expect.poll(() => totals(page)).toEqual([0]);
});

test("times are in ns as soon as the unit of timestamps is told", async ({ acquisition: _, site, page }) => {
  await page.goto(`${site.url}#/times?show=${encodeURIComponent("times1@0")}`);
  const summary = page.locator("[data-test=calibration] summary");
  await expect.poll(() => summary.innerText()).toContain("1000000000 timestamp units × bin");
  // They are counted always: a state would tell nothing.
  expect(await page.locator("[data-test=counting]").count()).toBe(0);
  await summary.click();
  await page.locator("[data-test=unit-ns]").fill("0.001");
  await page.locator("[data-test=unit-ns]").press("Enter");
  await expect.poll(() => summary.innerText()).toContain("1000000 ns × bin");
  await page.locator(".chart").focus();
  await page.keyboard.press(".");
  const { from } = await cursorAt(page);
  expect(await page.locator("[data-test=readout]").innerText()).toContain(`${from * 1_000_000} ns`);
});

test("the live spectrum searches once, and has the calibration of its channel", async ({ site, page }) => {
  const asked = await serveCounts(page, (channel) => peaksAt(100, [50, channel === 2 ? 500 : 5]));
  await openSpectra(page, site.url, "made@2");
  await page.locator("[data-test=calibration] summary").click();
  await page.locator("[data-test=gain]").fill("2");
  await page.locator("[data-test=gain]").press("Enter");
  await expect.poll(() => page.locator("[data-test=calibration] summary").innerText()).toContain("2 keV × bin");
  asked.length = 0;
  await page.goto(`${site.url}#/overview`);
  const live = page.locator("section.live");
  await expect.poll(() => live.getByRole("heading").innerText()).toBe("made, channel 2");
  await expect.poll(() => asked.filter((channels) => channels.join() === "2").length).toBeGreaterThan(3);
  expect(asked.filter((channels) => channels.length > 1)).toEqual([[0, 1, 2, 3]]);
  await live.locator(".chart").focus();
  await page.keyboard.press(".");
  const readOut = live.locator("[data-test=readout]");
  await expect.poll(() => readOut.innerText()).toMatch(/^100\.0 keV {2}bin 50 {3}channel 2: 520$/);
});
