import { writeFileSync } from "node:fs";
import { join } from "node:path";
import type { Page } from "playwright-core";
import { shownNumber, sumOf } from "./support/reading";
import { isWhole, storedEvents } from "./support/runFiles";
import { expect, lostConnection, test } from "./support/test";

const inRun = (page: Page, what: string) => page.locator(`[data-test=run-dumper1] [data-test=${what}]`);
const status = (page: Page): Promise<string> => inRun(page, "run-status").innerText();
const press = (page: Page, what: string): Promise<void> => page.locator(`[data-test=${what}]`).click();
const texts = (page: Page, what: string): Promise<string[]> =>
  page.locator(`[data-test=${what}]`).allInnerTexts();

async function begin(page: Page, id: string): Promise<void> {
  await page.locator("[data-test=run-id-input]").fill(id);
  await press(page, "run-start");
}

async function stop(page: Page): Promise<void> {
  await press(page, "run-stop");
  await press(page, "confirm-action");
  await expect.poll(() => status(page)).toBe("stopped");
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
  await expect.poll(() => page.title()).toMatch(/^● by-clicks · [\d.]+( [kM])?\/s – korvax$/);
  await expect.poll(() => texts(page, "run-losses")).toEqual(["Lost in this run: nothing."]);

  await press(page, "run-pause");
  await expect.poll(() => status(page)).toBe("paused");
  const paused = await shownNumber(inRun(page, "run-events"));
  await press(page, "run-restart");
  await expect.poll(() => status(page)).toBe("recording");
  await expect.poll(() => shownNumber(inRun(page, "run-events"))).toBeGreaterThan(paused);

  await stop(page);
  const folder = join(acquisition.folder, "by-clicks");
  await expect.poll(() => isWhole(folder)).toBe(true);
  const stored = storedEvents(folder);
  expect(stored).toBeGreaterThan(paused);
  await expect.poll(() => shownNumber(inRun(page, "run-events"))).toBe(stored);
  expect(await texts(page, "broken-run")).toEqual([]);
});

test("a run is stopped only when that is confirmed, by its name", async ({ acquisition: _, site, page }) => {
  await page.goto(site.url);
  await begin(page, "not-yet");
  await expect.poll(() => status(page)).toBe("recording");
  await press(page, "run-stop");
  const dialog = page.locator("dialog[open]");
  await expect.poll(() => dialog.innerText()).toContain("Stop run not-yet?");
  const before = await shownNumber(inRun(page, "run-events"));
  await dialog.getByRole("button", { name: "Cancel" }).click();
  await expect.poll(() => shownNumber(inRun(page, "run-events"))).toBeGreaterThan(before);
  expect(await status(page)).toBe("recording");
  await stop(page);
});

test("a run whose folder exists is refused by its id, with what to do", async ({ acquisition: _, site, page }) => {
  await page.goto(site.url);
  await begin(page, "twice_7");
  await expect.poll(() => status(page)).toBe("recording");
  await stop(page);
  await begin(page, "twice_7");
  const refusal = 'There is a folder of run twice_7 already ("Existing Folder"): choose another id.';
  await expect.poll(() => texts(page, "run-fault")).toEqual([refusal]);
  expect(await page.locator("[data-test=run-id-input]").inputValue()).toBe("twice_8");
  expect(await status(page)).toBe("stopped");
});

test("a run of waves alone is told as one, and can be stopped", async ({ acquisition, site, page }) => {
  await acquisition.kill();
  await acquisition.start(({ storage }) => Object.assign(storage, { enable_list: false, enable_mcs: false }));
  await page.goto(site.url);
  await begin(page, "waves-alone");
  const told = expect.stringMatching(/^Events aren't recorded: .*"enable_list" .* scope\w+.*: "Stop run" ends/);
  await expect.poll(() => texts(page, "run-without-events")).toEqual([told]);
  const enabled = (what: string): Promise<boolean> => page.locator(`[data-test=${what}]`).isEnabled();
  expect(await status(page)).toBe("stopped");
  expect(await enabled("run-start")).toBe(false);
  await stop(page);
  await expect.poll(() => texts(page, "run-without-events")).toEqual([]);
  await expect.poll(() => enabled("run-start")).toBe(true);
  await expect.poll(() => enabled("run-stop")).toBe(false);
});

test("a run of which nothing is recorded is told as one", async ({ acquisition, site, page }) => {
  await acquisition.kill();
  const none = { enable_list: false, enable_wave: false, enable_mcs: false };
  await acquisition.start(({ storage }) => Object.assign(storage, none));
  await page.goto(site.url);
  await begin(page, "nothing_1");
  const told = expect.stringMatching(/^Nothing is recorded of run nothing_1: .*"enable_list"/);
  await expect.poll(() => texts(page, "run-fault")).toEqual([told]);
  expect(await page.locator("[data-test=run-id-input]").inputValue()).toBe("nothing_2"); // its folder is made
  await acquisition.kill();
  await acquisition.start();
});

test("a run with a long id breaks no line of the page", async ({ acquisition: _, site, page }) => {
  await page.goto(site.url);
  await begin(page, "x".repeat(200));
  await expect.poll(() => status(page)).toBe("recording");
  await expect.poll(() => page.locator("[data-test=status]").innerText()).toContain("xxx");
  const widths = await page.evaluate(() =>
    ["html", "main", "[aria-label=Run]"].map((selector) => {
      const element = document.querySelector(selector)!;
      return element.scrollWidth - element.clientWidth;
    }),
  );
  expect(widths).toEqual([0, 0, 0]);
  await stop(page);
});

test("a run that ended with its server is told until somebody has read it", async ({
  acquisition,
  site,
  page,
  mayLog,
}) => {
  mayLog.push(lostConnection);
  await page.goto(site.url);
  await begin(page, "broken-off");
  await expect.poll(() => inRun(page, "run-id").innerText()).toBe("broken-off");
  await expect.poll(() => shownNumber(inRun(page, "run-events"))).toBeGreaterThan(0);
  await acquisition.kill();
  await acquisition.start();
  const told = expect.stringMatching(/started anew.* run broken-off was broken off.*korvaxctl files recover/);
  await expect.poll(() => texts(page, "broken-run")).toEqual([told]);
  await page.reload();
  await expect.poll(() => texts(page, "broken-run")).toEqual([told]);
  await page.locator("[data-test=broken-run] button").click();
  await expect.poll(() => texts(page, "broken-run")).toEqual([]);
  await page.reload();
  await expect.poll(() => status(page)).toBe("stopped");
  expect(await texts(page, "broken-run")).toEqual([]);
});

test("all spectra are emptied by one button, when that is confirmed", async ({
  acquisition: _,
  site,
  page,
  client,
}) => {
  const path = "processing/0/filter_chain/board0/chain/spectrum0";
  const counts = async (): Promise<number> => {
    const channels = Array.from({ length: 200 }, (_, channel) => channel);
    const all = await client.sink<{ data: number[] }[]>(path, { cmd: "get_data", channels });
    return sumOf(all.map(({ data }) => sumOf(data)));
  };
  await client.sink(path, { cmd: "run_control", status: "freerun" });
  await expect.poll(counts).toBeGreaterThan(0);
  await client.sink(path, { cmd: "run_control", status: "idle" });
  await page.goto(site.url);
  await press(page, "reset-spectra");
  await page.locator("dialog[open]").getByRole("button", { name: "Cancel" }).click();
  expect(await counts()).toBeGreaterThan(0);
  await press(page, "reset-spectra");
  await press(page, "confirm-action");
  await expect.poll(counts).toBe(0);
});

test("a run into a storage that can't be written is told as one, and can be stopped", async ({
  acquisition,
  site,
  page,
}) => {
  await acquisition.kill();
  const file = join(acquisition.folder, "no-folder");
  writeFileSync(file, "");
  await acquisition.start((configuration) => (configuration.storage.file_path = file));
  await page.goto(site.url);
  await begin(page, "nowhere");
  await expect
    .poll(async () => (await texts(page, "run-losses")).join())
    .toMatch(/dumper1 [\d\s]+ not written.* has no room or no permission/);
  await press(page, "run-stop");
  await press(page, "confirm-action");
  await expect.poll(() => page.locator("[data-test=run-stop]").isEnabled()).toBe(false);
});
