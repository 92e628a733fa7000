import type { Page } from "playwright-core";
import {
  countsOf, cursorAt, openSpectra, peaksAt, plotPoint, saved, serveCounts, totals,
} from "./support/histograms";
import { shownNumber, sumOf } from "./support/reading";
import type { Client } from "./support/question";
import { expect, test } from "./support/test";

const path = "processing/0/filter_chain/board0/chain/spectrum0";
const channel = 106;

const setCounting = (client: Client, status: "freerun" | "idle"): Promise<unknown> =>
  client.sink(path, { cmd: "run_control", status });

/** Has the channel count so much, and stop; what it then holds. */
async function countUpTo(client: Client, least: number): Promise<number[]> {
  await setCounting(client, "freerun");
  await expect.poll(async () => sumOf(await countsOf(client, path, channel))).toBeGreaterThan(least);
  await setCounting(client, "idle");
  let counts: number[] = [];
  // What is under way when it is stopped still arrives.
  await expect
    .poll(async () => {
      const before = sumOf(counts);
      counts = await countsOf(client, path, channel);
      return sumOf(counts) - before;
    })
    .toBe(0);
  return counts;
}

/** Moves the mouse over the plot; at each place the counts under it must be those that the server tells. */
async function compareAlong(page: Page, expected: (from: number, to: number) => number): Promise<number> {
  let seen = 0;
  for (let share = 0.05; share < 0.5; share += 0.03) {
    const { x, y } = await plotPoint(page, share);
    await page.mouse.move(x, y);
    await expect.poll(async () => (await cursorAt(page)).count).not.toBeNaN();
    const { from, to, count } = await cursorAt(page);
    expect([from, count]).toEqual([from, expected(from, to)]);
    seen += count;
  }
  return seen;
}

const sumWithin = (counts: readonly number[], from: number, to: number): number =>
  sumOf(counts.slice(from, to + 1));

test("the cursor reads what each bin holds, by mouse and by keys", async ({
  acquisition: _,
  site,
  page,
  client,
}) => {
  const counts = await countUpTo(client, 3_000);
  await openSpectra(page, site.url, `spectrum0@${channel}`);
  await expect.poll(() => totals(page)).toEqual([sumOf(counts)]);
  expect(await compareAlong(page, (from) => counts[from]!)).toBeGreaterThan(0);
  await page.locator(".chart").focus();
  const spoken = page.locator(".chart [aria-live=polite]");
  await page.keyboard.press(".");
  await expect.poll(() => spoken.textContent()).toMatch(/bin \d+/);
  const first = Number(/bin (\d+)/.exec((await spoken.textContent())!)![1]);
  for (const [key, bin] of [[".", first + 1], [".", first + 2], [",", first + 1], [",", first]] as const) {
    await page.keyboard.press(key);
    await expect.poll(() => cursorAt(page)).toEqual({ from: bin, to: bin, count: counts[bin] });
    await expect.poll(() => spoken.textContent()).toContain(`bin ${bin} `);
  }
});

test("bins that are summed hold the counts of each", async ({ acquisition: _, site, page, client }) => {
  const counts = await countUpTo(client, 3_000);
  await openSpectra(page, site.url, `spectrum0@${channel}`);
  await page.locator("[data-test=rebin]").selectOption("4");
  await expect.poll(() => page.locator(".chart").innerHTML()).toContain("canvas");
  const { x, y } = await plotPoint(page, 0.1);
  await page.mouse.move(x, y);
  await expect.poll(async () => (await cursorAt(page)).to - (await cursorAt(page)).from).toBe(3);
  expect(await compareAlong(page, (from, to) => sumWithin(counts, from, to))).toBeGreaterThan(0);
});

test("a region's gross is the sum of its bins, and a fit finds the mean", async ({
  acquisition: _,
  site,
  page,
  client,
}) => {
  const counts = await countUpTo(client, 5_000);
  await openSpectra(page, site.url, `spectrum0@${channel}`);
  await expect.poll(() => totals(page)).toEqual([sumOf(counts)]);
  await page.locator("[data-test=mark-clearest]").click();
  await page.locator("[data-test=fit-mean]").waitFor();
  const region = await page.locator("[data-test=regions] button[aria-pressed=true]").innerText();
  const [from, to] = /bin (\d+) – (\d+)/.exec(region)!.slice(1).map(Number) as [number, number];
  expect(await shownNumber(page.locator("[data-test=gross]"))).toBe(sumWithin(counts, from, to));
  const inside = counts.slice(from, to + 1);
  const mean = sumOf(inside.map((count, i) => count * (from + i))) / sumOf(inside);
  const fitted = await page.locator("[data-test=fit-mean]").innerText();
  const [value, error] = /^([\d.]+) ± ([\d.]+) bin$/.exec(fitted)!.slice(1).map(Number) as [number, number];
  expect(error).toBeGreaterThan(0);
  // The line stands on next to nothing: its plain mean is where the fit must be.
  expect(Math.abs(value - mean)).toBeLessThan(5 * error);
});

test("a region that is entered holds the sum of its bins", async ({ acquisition: _, site, page, client }) => {
  const counts = await countUpTo(client, 3_000);
  await openSpectra(page, site.url, `spectrum0@${channel}`);
  await page.locator("[data-test=from]").fill("100");
  await page.locator("[data-test=to]").fill("399");
  await page.locator("[data-test=add-region]").click();
  await expect.poll(() => shownNumber(page.locator("[data-test=gross]"))).toBe(sumWithin(counts, 100, 399));
  expect(sumWithin(counts, 100, 399)).toBeGreaterThan(0);
});

test("what is frozen stays while the server counts on, and is kept to compare with", async ({
  acquisition: _,
  site,
  page,
  client,
}) => {
  await setCounting(client, "freerun");
  await openSpectra(page, site.url, `spectrum0@${channel}`);
  await page.locator("[data-test=freeze]").click();
  await page.locator("[data-test=frozen]").waitFor();
  const [frozen = NaN] = await totals(page);
  await expect.poll(async () => sumOf(await countsOf(client, path, channel))).toBeGreaterThan(frozen + 1_000);
  expect(await totals(page)).toEqual([frozen]);
  await page.locator("[data-test=keep]").click();
  await page.locator("[data-test=freeze]").click();
  await expect.poll(async () => (await totals(page))[0]! - frozen).toBeGreaterThan(1_000);
  const counts = await countUpTo(client, 0);
  await expect.poll(() => totals(page)).toEqual([sumOf(counts), frozen]);
});

test("a saved table holds the numbers of the server, and the page reads it again", async ({
  acquisition: _,
  site,
  page,
  client,
}) => {
  const counts = await countUpTo(client, 1_000);
  await openSpectra(page, site.url, `spectrum0@${channel}`);
  await expect.poll(() => totals(page)).toEqual([sumOf(counts)]);
  const table = await saved(page, "csv");
  const [head, ...rows] = table.toString("utf8").trim().split("\n");
  expect(head).toBe(`bin,position (bin),spectrum0 · ch ${channel}`);
  expect(rows.map((row) => row.split(",").map(Number))).toEqual(counts.map((count, bin) => [bin, bin, count]));
  await page.locator("[data-test=file]").setInputFiles({ name: "a.csv", mimeType: "text/csv", buffer: table });
  await expect.poll(() => totals(page)).toEqual([sumOf(counts), sumOf(counts)]);
});

test("a saved picture is one, as large as the chart", async ({ site, page }) => {
  await serveCounts(page, () => peaksAt(1_000, [300, 500]));
  await openSpectra(page, site.url, "made@0,1");
  const chart = (await page.locator(".chart canvas").boundingBox())!;
  const picture = await saved(page, "png");
  expect(picture.subarray(0, 8).toString("latin1")).toBe("\x89PNG\r\n\x1a\n");
  expect(picture.readUInt32BE(16)).toBe(Math.round(chart.width));
  expect(picture.readUInt32BE(20)).toBeGreaterThan(chart.height);
  expect(picture.length).toBeGreaterThan(5_000);
});

/** Tells where the marked peak belongs, and waits until it is there. */
async function calibrateTo(page: Page, keV: number): Promise<void> {
  await page.locator("[data-test=fit-mean]").waitFor();
  await page.locator("[data-test=known]").fill(String(keV));
  await page.locator("[data-test=calibrate]").click();
  await expect.poll(() => fittedKeV(page)).toBeCloseTo(keV, 1);
}

async function fittedKeV(page: Page): Promise<number> {
  const [text = ""] = await page.locator("[data-test=fit-mean]").allInnerTexts();
  return Number(/^([\d.]+) ± [\d.]+ keV$/.exec(text)?.[1] ?? NaN);
}

test("two lines calibrate their channel; all of the block have it only when asked to", async ({ site, page }) => {
  await serveCounts(page, () => peaksAt(1_000, [200, 900], [600, 500]));
  await openSpectra(page, site.url, "made@0,1");
  const calibration = (): Promise<string> => page.locator("[data-test=calibration] summary").innerText();
  await page.locator("[data-test=mark-clearest]").click();
  await calibrateTo(page, 511);
  await page.locator("[data-test=mark-clearest]").click();
  await calibrateTo(page, 1275);
  await page.locator("[data-test=regions] button[aria-pressed]").first().click();
  await expect.poll(() => fittedKeV(page)).toBeCloseTo(511, 1);
  expect(await calibration()).toMatch(/^Calibration of made, channel 0: 1\.91\d* keV × bin \+ 129/);

  await page.getByRole("radio", { name: "made · ch 1" }).check();
  await expect.poll(calibration).toBe("Calibration of made, channel 1: none");
  await page.getByRole("radio", { name: "made · ch 0" }).check();
  await page.locator("[data-test=calibration] summary").click();
  await expect.poll(() => page.locator("[data-test=residual]").allInnerTexts()).toEqual(["0.00", "0.00"]);
  await page.locator("[data-test=share]").click();
  await page.getByRole("radio", { name: "made · ch 1" }).check();
  await expect.poll(calibration).toMatch(/^Calibration of all channels of made: 1\.91/);
});

test("a known line is removed, and the axis goes through the other one", async ({ site, page }) => {
  await serveCounts(page, () => peaksAt(1_000, [200, 900], [600, 500]));
  await openSpectra(page, site.url, "made@0");
  for (const keV of [511, 1275]) {
    await page.locator("[data-test=mark-clearest]").click();
    await calibrateTo(page, keV);
  }
  const summary = page.locator("[data-test=calibration] summary");
  await summary.click();
  await page.getByRole("button", { name: "Remove the line at 511 keV" }).click();
  await expect.poll(() => summary.innerText()).toMatch(/: 2\.125\d* keV × bin$/);
  await page.getByRole("button", { name: "Remove the line at 1275 keV" }).click();
  await expect.poll(() => summary.innerText()).toBe("Calibration of made, channel 0: none");
});

test("a unit of timestamps that is no number is refused, and the one known is kept", async ({
  acquisition: _,
  site,
  page,
}) => {
  await page.goto(`${site.url}#/times?show=${encodeURIComponent("times1@0")}`);
  const summary = page.locator("[data-test=calibration] summary");
  const field = page.locator("[data-test=unit-ns]");
  const fault = page.locator("[data-test=unit-fault]");
  await summary.click();
  await field.fill("0.001");
  await field.press("Enter");
  await expect.poll(() => summary.innerText()).toContain("1000000 ns × bin");
  for (const text of ["10 ns", "0"]) {
    await field.fill(text);
    await field.press("Enter");
    await expect.poll(() => fault.allInnerTexts()).toEqual([
      "Enter a number above 0 without its unit, or nothing to forget it.",
    ]);
    expect(await summary.innerText()).toContain("1000000 ns × bin");
  }
  await field.fill("");
  await field.press("Enter");
  await expect.poll(() => summary.innerText()).toContain("timestamp units × bin");
  expect(await fault.count()).toBe(0);
});

test("what is frozen stays when its block goes, and no longer than it is frozen", async ({ site, page }) => {
  let isGone = false;
  await page.clock.install();
  await serveCounts(page, () => [1, 2, 3, 4], () => isGone);
  await openSpectra(page, site.url, "made@0");
  await expect.poll(() => totals(page)).toEqual([10]);
  await page.locator("[data-test=freeze]").click();
  await page.locator("[data-test=frozen]").waitFor();
  isGone = true;
  await page.clock.fastForward(10_000); // the blocks are asked for so often
  await expect
    .poll(() => page.locator("[data-test=block-gone]").allInnerTexts())
    .toEqual(["The server has no made. It isn't shown."]);
  expect(await totals(page)).toEqual([10]);
  await page.locator("[data-test=freeze]").click();
  await page.locator("[data-test=no-block]").waitFor();
});
