import { join } from "node:path";
import type { Page } from "playwright-core";
import { shownNumber } from "./support/reading";
import { isWhole, storedEvents } from "./support/runFiles";
import { expect, test } from "./support/test";
import { chooseView } from "./support/views";

const mostStops = 100; // more than any view has

/** Presses Tab until this has the focus. */
async function tabTo(page: Page, name: string): Promise<void> {
  const focused = (): Promise<string | null> =>
    page.evaluate(() => document.activeElement?.getAttribute("data-test") ?? null);
  for (let i = 0; (await focused()) !== name; ++i) {
    expect(i, `Tab leads to ${name}`).toBeLessThan(mostStops);
    await page.keyboard.press("Tab");
  }
}

test("a whole run is taken with the keyboard alone", async ({ acquisition, site, page }) => {
  await page.goto(`${site.url}#/chain`);
  await chooseView(page, "overview");
  const figure = (what: string) => page.locator(`[data-test=run-dumper1] [data-test=${what}]`);
  const status = (): Promise<string> => figure("run-status").innerText();
  const pressEnterOn = async (what: string): Promise<void> => {
    await expect.poll(() => page.locator(`[data-test=${what}]`).isEnabled()).toBe(true);
    await tabTo(page, what);
    await page.keyboard.press("Enter");
  };
  await expect.poll(status).toBe("stopped");
  await tabTo(page, "run-id-input");
  await page.keyboard.press("Control+A");
  await page.keyboard.type("by-keys_1");
  await page.keyboard.press("Enter");
  await expect.poll(status).toBe("recording");
  await expect.poll(() => shownNumber(figure("run-events"))).toBeGreaterThan(0);
  await pressEnterOn("run-pause");
  await expect.poll(status).toBe("paused");
  await pressEnterOn("run-restart");
  await expect.poll(status).toBe("recording");
  const question = page.locator("dialog[open]");
  await pressEnterOn("run-stop");
  await question.waitFor();
  await page.keyboard.press("Escape");
  await expect.poll(() => question.count()).toBe(0);
  expect(await status()).toBe("recording");
  await pressEnterOn("run-stop");
  await question.waitFor();
  await tabTo(page, "confirm-action");
  await page.keyboard.press("Enter");
  await expect.poll(status).toBe("stopped");

  const folder = join(acquisition.folder, "by-keys_1");
  await expect.poll(() => isWhole(folder)).toBe(true);
  const stored = storedEvents(folder);
  expect(stored).toBeGreaterThan(0);
  await expect.poll(() => shownNumber(figure("run-events"))).toBe(stored);
});

test("a view that a digit chose is where Tab goes on, without a ring around all of it", async ({ site, page }) => {
  await page.goto(site.url);
  await chooseView(page, "rates");
  const focus = await page.evaluate(() => {
    const { tagName } = document.activeElement!;
    return [tagName, getComputedStyle(document.activeElement!).outlineStyle];
  });
  expect(focus).toEqual(["MAIN", "none"]);
});
