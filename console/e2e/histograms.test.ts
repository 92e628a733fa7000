import { countSomething, numberIn, sumOf } from "./support/reading";
import { expect, test } from "./support/test";
import type { Page } from "playwright-core";
import type { Client } from "./support/question";

const totals = async (page: Page): Promise<number[]> =>
  (await page.locator("[data-test=curves] [data-test=total]").allInnerTexts()).map(numberIn);

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
