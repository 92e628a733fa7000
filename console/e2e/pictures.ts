import { mkdirSync, statSync } from "node:fs";
import { join } from "node:path";
import type { Page } from "playwright-core";
import { places } from "./support/places";
import type { Client } from "./support/question";
import { expect, test } from "./support/test";

// The pictures of the documentation, one of each view in light and in dark. Taken by e2e/run --pictures.

const largest = 150_000; // bytes
const chain = "processing/0/filter_chain";

const scenes: Record<string, string> = {
  overview: "#/overview",
  spectra: `#/spectra?show=${encodeURIComponent("spectrum0@104-106")}`,
  times: `#/times?show=${encodeURIComponent("times1@0-3")}`,
  position: "#/position",
  image: "#/image",
  scope: "#/scope",
  rates: "#/rates",
  hv: "#/hv",
  chain: "#/chain?block=sorter1",
};

const counting = [
  "board0/chain/spectrum0",
  "board0/chain/image0",
  "board1/chain/spectrum1",
  "board1/chain/position1",
];

/** Until there is something to see. */
async function prepare(client: Client): Promise<void> {
  for (const path of counting) {
    await client.sink(`${chain}/${path}`, { cmd: "run_control", status: "freerun" });
  }
  const counted = async (name: string): Promise<number> =>
    (await client.ledger()).find((entry) => entry.name === name)?.became["counted"] ?? 0;
  await expect.poll(() => counted("image0")).toBeGreaterThan(1_000_000);
}

/** What a view shows only when it is asked to. */
const gestures: Record<string, (page: Page) => Promise<void>> = {
  spectra: async (page) => {
    const mark = page.locator("[data-test=mark-clearest]");
    await mark.click();
    await page.locator("[data-test=fit]").waitFor();
  },
  chain: async (page) => {
    await page.locator("[data-test=block-chooser]").selectOption({ label: "sorter1 (time_sorting)" });
    await page.locator("[data-test=block-panel]").waitFor();
  },
};

for (const theme of ["light", "dark"] as const) {
  test(`every view has a ${theme} picture`, async ({ acquisition: _, site, client, page }) => {
    mkdirSync(places.pictures, { recursive: true });
    await prepare(client);
    await page.emulateMedia({ colorScheme: theme });
    for (const [view, address] of Object.entries(scenes)) {
      await page.goto("about:blank");
      await page.goto(site.url + address);
      await gestures[view]?.(page);
      // Rates need two answers, and curves their first.
      await page.waitForTimeout(4_000);
      const path = join(places.pictures, `${view}-${theme}.png`);
      await page.screenshot({ path });
      expect(statSync(path).size).toBeLessThanOrEqual(largest);
    }
  });
}
