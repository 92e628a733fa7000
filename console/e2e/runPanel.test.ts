import type { Page } from "playwright-core";
import { FakeRun } from "./support/fakeRun";
import { fakeServer } from "./support/fakeServer";
import { expect, test } from "./support/test";

const press = (page: Page, what: string): Promise<void> => page.locator(`[data-test=${what}]`).click();
const proposal = (page: Page): Promise<string> => page.locator("[data-test=run-id-input]").inputValue();

test("the id that is proposed follows the last run, whoever began it, and the day", async ({ site, page }) => {
  const run = new FakeRun();
  await fakeServer(page, run.answers);
  await page.clock.setFixedTime(new Date(2026, 2, 5, 12));
  await page.goto(site.url);
  await expect.poll(() => proposal(page)).toBe("2026-03-05_001");
  await press(page, "run-start");
  await expect.poll(() => proposal(page)).toBe("2026-03-05_002");
  run.tell({ status: 0, id: "2026-03-05_006" }); // another console's
  await expect.poll(() => proposal(page)).toBe("2026-03-05_007");
  await page.clock.setFixedTime(new Date(2026, 2, 6, 0, 1));
  await expect.poll(() => proposal(page)).toBe("2026-03-06_001");
});

test("a name of the operator's own is followed by the next of it", async ({ site, page }) => {
  const run = new FakeRun();
  await fakeServer(page, run.answers);
  await page.goto(site.url);
  await page.locator("[data-test=run-id-input]").fill("night_7");
  await press(page, "run-start");
  await expect.poll(() => proposal(page)).toBe("night_8");
  expect(run.dumpers.map(({ id }) => id)).toEqual(["night_7", "night_7"]);
  expect(run.ordered).toEqual(["start_dump"]);
});

test("a run that only the second dumper records is told as one, on every view and by the window", async ({
  site,
  page,
}) => {
  const run = new FakeRun();
  await fakeServer(page, run.answers);
  Object.assign(run.dumpers[1]!, { status: 1, id: "late_1" });
  await page.goto(site.url);
  await expect.poll(() => page.locator("[data-test=status]").innerText()).toContain("run late_1 recording");
  await expect.poll(() => page.title()).toMatch(/^● late_1 · /);
  run.dumpers[1]!.status = 0;
  await expect.poll(() => page.locator("[data-test=status]").innerText()).toContain("no events recorded");
});

test("a run that ended with its server is told by a page that was loaded anew", async ({ site, page }) => {
  const run = new FakeRun();
  await fakeServer(page, run.answers);
  run.tell({ status: 1, id: "f5_1" });
  await page.goto(site.url);
  await expect.poll(() => page.locator("[data-test=status]").innerText()).toContain("run f5_1 recording");
  await page.goto("about:blank");
  run.tell({ status: 0, id: "" });
  await page.goto(site.url);
  const told = expect.stringContaining("run f5_1 was broken off, unless somebody stopped it before");
  await expect.poll(() => page.locator("[data-test=broken-run]").allInnerTexts()).toEqual([told]);
});

test("that nothing is lost is said in green only while it is known", async ({ site, page }) => {
  const run = new FakeRun();
  await fakeServer(page, run.answers);
  run.tell({ status: 1, id: "1" });
  await page.goto(site.url);
  const losses = page.locator("[data-test=run-losses]");
  const tone = (): Promise<string | null> => losses.getAttribute("class");
  await expect.poll(tone).toBe("good");
  const scope = run.counts.get("scope0")!;
  run.counts.delete("scope0");
  await expect.poll(tone).toBe("faint");
  expect(await losses.innerText()).toBe("Lost in this run: nothing.");
  run.counts.set("scope0", scope);
  await expect.poll(tone).toBe("good");
});

test("the figures of a run are those that its dumper tells", async ({ site, page }) => {
  const run = new FakeRun();
  await fakeServer(page, run.answers);
  const counted = { event_rate: 12_345.6, stored_events: 12_345_678 };
  Object.assign(run.dumpers[0]!, { status: 1, id: "night_7", ...counted });
  Object.assign(run.dumpers[0]!, { running_time: 3_725.4, used_space: 1_234_567 });
  Object.assign(run.dumpers[1]!, { status: 2, id: "night_7", used_space: 999, event_rate: 0.5 });
  await page.goto(site.url);
  const shown = async (name: string): Promise<string[]> => {
    const texts = await page.locator(`[data-test=run-${name}] > *`).allInnerTexts();
    return texts.map((text) => text.replace(/\s/g, " "));
  };
  await expect.poll(() => shown("dumper0")).toEqual([
    "state of dumper0", "recording", "run", "night_7", "running time", "1:02:05", "events", "12 345 678",
    "rate", "12.3 k /s", "in the current file", "1.23 MB",
  ]);
  expect(await shown("dumper1")).toEqual([
    "state of dumper1", "paused", "run", "night_7", "running time", "0:00", "events", "0",
    "rate", "–", "in the current file", "999 B",
  ]);
});

test("what a run lost is told by recorder and cause, in red while it becomes more", async ({ site, page }) => {
  const run = new FakeRun();
  await fakeServer(page, run.answers);
  run.tell({ status: 1, id: "1" });
  Object.assign(run.counts.get("dumper1")!, { overwritten: 7 });
  const scope = Object.assign(run.counts.get("scope0")!, { failed: 3, dropped: 1_234, overwritten: 5 });
  await page.goto(site.url);
  const losses = page.locator("[data-test=run-losses]");
  const text = async (): Promise<string[]> =>
    (await losses.allInnerTexts()).map((said) => said.replace(/\s/g, " "));
  const lostOfScope = (failed: number): string =>
    `Lost in this run: dumper1 7 written over; ` +
    `scope0 ${failed} not written, 1 234 dropped at a full queue, 5 written over. ` +
    `What isn't written has no room or no permission: the server's log says why. Stop the run before the next one.`;
  await expect.poll(text).toEqual([lostOfScope(3)]);
  expect(await losses.getAttribute("class")).toBe("warn");
  scope.failed = 4;
  await expect.poll(text).toEqual([lostOfScope(4)]);
  expect(await losses.getAttribute("class")).toBe("alarm");
});

test("all sources are reset once, when that is confirmed, and not during a run", async ({ site, page }) => {
  const run = new FakeRun();
  await fakeServer(page, run.answers);
  await page.goto(site.url);
  const dialog = page.locator("dialog[open]");
  await press(page, "reset");
  await expect.poll(() => dialog.innerText()).toMatch(/Reset all sources\?\s+Every board is stopped/);
  await dialog.getByRole("button", { name: "Cancel" }).click();
  await expect.poll(() => dialog.count()).toBe(0);
  expect(run.ordered).toEqual([]);
  await press(page, "reset");
  await press(page, "confirm-action");
  await expect.poll(() => run.ordered).toEqual(["reset"]);
  await expect.poll(() => dialog.count()).toBe(0);
  await press(page, "run-start");
  await expect.poll(() => page.locator("[data-test=reset]").isEnabled()).toBe(false);
  await expect.poll(() => run.ordered).toEqual(["reset", "start_dump"]);
});
