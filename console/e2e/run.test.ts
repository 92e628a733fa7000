import { execFileSync } from "node:child_process";
import { existsSync, mkdtempSync, readdirSync, readFileSync, rmSync } from "node:fs";
import { tmpdir } from "node:os";
import { dirname, join } from "node:path";
import type { Page } from "playwright-core";
import { places } from "./support/places";
import { shownNumber } from "./support/reading";
import { expect, test } from "./support/test";

const client = join(dirname(places.server), "korvaxctl");

const inRun = (page: Page, what: string) => page.locator(`[data-test=run-dumper1] [data-test=${what}]`);
const status = (page: Page): Promise<string> => inRun(page, "run-status").innerText();
const press = (page: Page, what: string): Promise<void> => page.locator(`[data-test=${what}]`).click();

async function begin(page: Page, id: string): Promise<void> {
  await page.locator("[data-test=run-id-input]").fill(id);
  await press(page, "run-start");
}

/** The events in the files that a dumper wrote. */
function storedEvents(folder: string): number {
  const files = readdirSync(folder).filter((name) => /^dumper1_\d+\.bin$/.test(name));
  const target = mkdtempSync(join(tmpdir(), "korvax-read-"));
  try {
    const csv = join(target, "events.csv");
    execFileSync(client, ["files", "csv", ...files.map((name) => join(folder, name)), "--output", csv]);
    return readFileSync(csv, "utf8").trimEnd().split("\n").length;
  } finally {
    rmSync(target, { recursive: true });
  }
}

test("a whole run is taken by clicks, and its files hold what the page said", async ({
  acquisition,
  site,
  page,
}) => {
  await page.goto(site.url);
  await begin(page, "by-clicks");
  await expect.poll(() => status(page)).toBe("recording");
  expect(await inRun(page, "run-id").innerText()).toBe("by-clicks");
  await expect.poll(() => shownNumber(inRun(page, "run-events"))).toBeGreaterThan(0);

  await press(page, "run-pause");
  await expect.poll(() => status(page)).toBe("paused");
  const paused = await shownNumber(inRun(page, "run-events"));
  await press(page, "run-restart");
  await expect.poll(() => status(page)).toBe("recording");
  await expect.poll(() => shownNumber(inRun(page, "run-events"))).toBeGreaterThan(paused);

  await press(page, "run-stop");
  await press(page, "confirm-action");
  await expect.poll(() => status(page)).toBe("stopped");
  const folder = join(acquisition.folder, "by-clicks");
  const verified = (): string => execFileSync(client, ["files", "verify", folder], { encoding: "utf8" });
  await expect.poll(() => existsSync(folder) && isWhole(verified)).toBe(true);
  const stored = storedEvents(folder);
  expect(stored).toBeGreaterThan(paused);
  await expect.poll(() => shownNumber(inRun(page, "run-events"))).toBe(stored);
});

/** A recorder ends its files at the first data behind the stop. */
function isWhole(verified: () => string): boolean {
  try {
    verified();
    return true;
  } catch {
    return false;
  }
}

test("a run whose folder exists is refused, with what to do", async ({ acquisition: _, site, page }) => {
  await page.goto(site.url);
  await begin(page, "twice");
  await expect.poll(() => status(page)).toBe("recording");
  await press(page, "run-stop");
  await press(page, "confirm-action");
  await expect.poll(() => status(page)).toBe("stopped");
  await begin(page, "twice");
  await expect.poll(() => page.locator("[data-test=run-fault]").allInnerTexts()).toEqual([
    expect.stringContaining('"Existing Folder"'),
  ]);
  expect(await status(page)).toBe("stopped");
});
