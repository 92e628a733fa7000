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

const texts = (page: Page, selector: string): Promise<string> =>
  page.locator(selector).allTextContents().then((all) => all.join("\n"));

/** Curves have colours; axes and grids are grey. */
const isDrawn = (page: Page): Promise<boolean> =>
  page.evaluate(() =>
    [...document.querySelectorAll("main canvas")].some((canvas) => {
      const { width, height } = canvas as HTMLCanvasElement;
      const { data } = (canvas as HTMLCanvasElement).getContext("2d")!.getImageData(0, 0, width, height);
      const isColoured = (at: number): boolean =>
        data[at + 3]! > 0 && Math.max(...data.subarray(at, at + 3)) - Math.min(...data.subarray(at, at + 3)) > 60;
      return Array.from({ length: width * height }, (_, i) => 4 * i).filter(isColoured).length > 300;
    }),
  );

const drawn = async (page: Page): Promise<void> => expect.poll(() => isDrawn(page)).toBe(true);

/** Until a text of the view is as it is in a measurement that runs. */
const reads = (selector: string, pattern: RegExp) => async (page: Page): Promise<void> => {
  await expect.poll(() => texts(page, selector)).toMatch(pattern);
};

const thousands = /^[1-9]\d{0,2}([\s\u202f]\d{3})+$/m;

/** What is done in a view, and what it shows then. */
const ready: Record<string, ((page: Page) => Promise<void>)[]> = {
  overview: [reads(".live h2", /channel [1-9]/), drawn],
  spectra: [
    (page) => page.locator("[data-test=mark-clearest]").click(),
    (page) => page.locator("[data-test=fit]").waitFor(),
    drawn,
  ],
  times: [reads("[data-test=total]", thousands), drawn],
  position: [reads("[data-test=total]", thousands), drawn],
  image: [reads("[data-test=total]", thousands), drawn],
  scope: [reads("[data-test=scope-traces]", /\d/), drawn],
  rates: [reads("[data-test=rates]", /\d/), drawn],
  hv: [(page) => page.locator("[data-test=hv-values]").waitFor(), reads("[data-test=hv-values]", /\d{3}/)],
  chain: [
    async (page) => {
      await page.locator("[data-test=block-chooser]").selectOption({ label: "sorter1 (time_sorting)" });
    },
    (page) => page.locator("[data-test=block-panel]").waitFor(),
    reads("[data-test=rate]", /k/),
  ],
};

for (const theme of ["light", "dark"] as const) {
  test(`every view has a ${theme} picture`, async ({ acquisition: _, site, client, page }) => {
    mkdirSync(places.pictures, { recursive: true });
    await prepare(client);
    await page.emulateMedia({ colorScheme: theme });
    for (const [view, address] of Object.entries(scenes)) {
      await page.goto("about:blank");
      await page.goto(site.url + address);
      await reads("[data-test=status]", /k records\/s/)(page);
      for (const step of ready[view]!) {
        await step(page);
      }
      const path = join(places.pictures, `${view}-${theme}.png`);
      await page.screenshot({ path });
      expect(statSync(path).size).toBeLessThanOrEqual(largest);
    }
  });
}
