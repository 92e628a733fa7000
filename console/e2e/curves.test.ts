import type { CDPSession, Page } from "playwright-core";
import { drawnTexts, recordTexts } from "./support/canvas";
import {
  cursorAt, drag, nextSpan, openSpectra, peaksAt, plotPoint, serveCounts, shownSpan, totals,
} from "./support/histograms";
import { shownNumber } from "./support/reading";
import { expect, test } from "./support/test";

const bins = 1_000;
const width = ([from, to]: [number, number]): number => to - from;
const middle = ([from, to]: [number, number]): number => (from + to) / 2;

test("keys zoom, move and show all again", async ({ site, page }) => {
  await serveCounts(page, () => peaksAt(bins, [300, 500]));
  await openSpectra(page, site.url, "made@0");
  await page.locator(".chart").focus();
  await page.keyboard.press("+");
  const zoomed = (await nextSpan(page, null))!;
  expect(width(zoomed)).toBeCloseTo(0.7 * bins, 0);
  expect(middle(zoomed)).toBeCloseTo(bins / 2 - 0.5, 0);
  await page.keyboard.press("ArrowRight");
  const moved = (await nextSpan(page, zoomed))!;
  expect(moved[0] - zoomed[0]).toBeCloseTo(0.1 * width(zoomed), 0);
  expect(width(moved)).toBeCloseTo(width(zoomed), 0);
  await page.keyboard.press("Home");
  expect(await nextSpan(page, moved)).toBeNull();
});

test("the cursor takes what is looked at with it when keys move it out of sight", async ({ site, page }) => {
  await serveCounts(page, () => peaksAt(bins, [300, 500]));
  await openSpectra(page, site.url, "made@0", "&span=499.5to503.5");
  await page.locator(".chart").focus();
  for (const bin of [502, 503, 504]) {
    await page.keyboard.press(".");
    await expect.poll(async () => (await cursorAt(page)).from).toBe(bin);
  }
  const [from, to] = (await nextSpan(page, [499.5, 503.5]))!;
  expect([from < 504, to > 504]).toEqual([true, true]);
});

test("the wheel zooms at the mouse, dragging chooses, and the right button moves", async ({ site, page }) => {
  await serveCounts(page, () => peaksAt(bins, [300, 500]));
  await openSpectra(page, site.url, "made@0");
  const { x, y } = await plotPoint(page, 0.25);
  await page.mouse.move(x, y);
  await expect.poll(async () => (await cursorAt(page)).count).not.toBeNaN();
  const { from: pointed } = await cursorAt(page);
  await page.mouse.wheel(0, -100);
  const zoomed = (await nextSpan(page, null))!;
  expect(width(zoomed)).toBeCloseTo(0.8 * bins, 0);
  expect((pointed - zoomed[0]) / width(zoomed)).toBeCloseTo(0.25, 2);

  await drag(page, 0.5, 0.25);
  const chosen = (await nextSpan(page, zoomed))!;
  expect(chosen[0]).toBeCloseTo(zoomed[0] + 0.25 * width(zoomed), -1);
  expect(width(chosen)).toBeCloseTo(0.25 * width(zoomed), -1);

  await drag(page, 0.2, 0.6, "right");
  const moved = (await nextSpan(page, chosen))!;
  expect(moved[0]).toBeCloseTo(chosen[0] - 0.4 * width(chosen), -1);
  expect(width(moved)).toBeCloseTo(width(chosen), 0);
});

test("dragging marks with Shift, and once after “Mark”", async ({ site, page }) => {
  await serveCounts(page, () => peaksAt(bins, [300, 500]));
  await openSpectra(page, site.url, "made@0");
  const regions = page.locator("[data-test=regions] li");
  await page.keyboard.down("Shift");
  await drag(page, 0.1, 0.2);
  await page.keyboard.up("Shift");
  await expect.poll(() => regions.count()).toBe(1);
  const mark = page.locator("[data-test=mark]");
  await mark.click();
  await expect.poll(() => mark.getAttribute("aria-pressed")).toBe("true");
  await drag(page, 0.25, 0.35);
  await expect.poll(() => regions.count()).toBe(2);
  expect(await mark.getAttribute("aria-pressed")).toBe("false");
  const [from, to] = /bin (\d+) – (\d+)/.exec(await regions.last().innerText())!.slice(1).map(Number);
  expect([Math.abs(from! - 250) < 5, Math.abs(to! - 350) < 5]).toEqual([true, true]);
  expect(shownSpan(page)).toBeNull();
  await drag(page, 0.25, 0.35);
  await nextSpan(page, null);
  expect(await regions.count()).toBe(2);
});

type Fingers = { x: number; y: number }[];

/** Puts fingers down, moves them to other places in steps, and lifts them. */
async function touch(session: CDPSession, from: Fingers, to: Fingers): Promise<void> {
  const steps = 8;
  const send = (type: "touchStart" | "touchMove" | "touchEnd", touchPoints: Fingers): Promise<unknown> =>
    session.send("Input.dispatchTouchEvent", { type, touchPoints });
  await send("touchStart", from);
  for (let i = 1; i <= steps; ++i) {
    const at = (a: number, b: number): number => a + ((b - a) * i) / steps;
    await send("touchMove", from.map(({ x, y }, k) => ({ x: at(x, to[k]!.x), y: at(y, to[k]!.y) })));
  }
  await send("touchEnd", []);
}

test("one finger scrolls the page and moves what is zoomed, and two zoom", async ({ browser, site }) => {
  const viewport = { width: 800, height: 700 };
  const context = await browser.newContext({ viewport, hasTouch: true, isMobile: true });
  const page = await context.newPage();
  await serveCounts(page, () => peaksAt(bins, [300, 500]));
  await openSpectra(page, site.url, "made@0");
  const session = await context.newCDPSession(page);
  const scrolled = (): Promise<number> => page.locator("main").evaluate((main) => main.scrollTop);
  const start = await plotPoint(page, 0.5);
  await touch(session, [start], [{ x: start.x, y: start.y - 150 }]);
  await expect.poll(scrolled).toBeGreaterThan(50);
  expect(shownSpan(page)).toBeNull();

  const [a, b] = [await plotPoint(page, 0.4), await plotPoint(page, 0.6)];
  const [left, right] = [await plotPoint(page, 0.3), await plotPoint(page, 0.7)];
  await touch(session, [a, b], [left, right]);
  await expect.poll(() => width(shownSpan(page) ?? [0, bins])).toBeCloseTo(bins / 2, -1.7);
  const zoomed = shownSpan(page)!;
  expect(Math.abs(middle(zoomed) - bins / 2)).toBeLessThan(30);

  await touch(session, [left], [await plotPoint(page, 0.5)]);
  const moved = (await nextSpan(page, zoomed))!;
  expect(width(moved)).toBeCloseTo(width(zoomed), 0);
  expect(moved[0]).toBeLessThan(zoomed[0] - 0.1 * width(zoomed));

  const mark = page.locator("[data-test=mark]");
  await mark.click(); // right after a scroll a tap may only end that
  await expect.poll(() => mark.getAttribute("aria-pressed")).toBe("true");
  await touch(session, [await plotPoint(page, 0.3)], [await plotPoint(page, 0.5)]);
  await expect.poll(() => page.locator("[data-test=regions] li").count()).toBe(1);
  await context.close();
});

/** How many pixels of a column of the plot have the curve's colour, above its foot. */
function inkAt(page: Page, share: number): Promise<number> {
  return page.evaluate((part) => {
    const canvas = document.querySelector<HTMLCanvasElement>(".chart canvas")!;
    const [frame, plot] = [canvas, document.querySelector(".u-over")!].map((of) => of.getBoundingClientRect());
    const scale = canvas.width / frame!.width;
    const x = Math.round((plot!.left - frame!.left + part * plot!.width) * scale);
    const foot = Math.round((plot!.bottom - frame!.top - 4) * scale);
    const column = canvas.getContext("2d")!.getImageData(x - 1, 0, 3, foot).data;
    let ink = 0;
    for (let i = 0; i < column.length; i += 4) {
      ink += column[i + 2]! - column[i]! > 60 ? 1 : 0; // blue
    }
    return ink;
  }, share);
}

test("a bin with one count is seen beside a million on a logarithmic axis", async ({ site, page }) => {
  const counts = Array.from({ length: bins }, (_, bin) => (bin === 250 ? 1 : bin === 700 ? 1_000_000 : 0));
  await serveCounts(page, () => counts);
  await page.emulateMedia({ colorScheme: "light" });
  await openSpectra(page, site.url, "made@0", "&log=1");
  const shareOf = (bin: number): number => (bin + 0.5) / bins;
  await expect.poll(() => inkAt(page, shareOf(700))).toBeGreaterThan(100);
  expect(await inkAt(page, shareOf(250))).toBeGreaterThan(5);
  expect(await inkAt(page, shareOf(450))).toBe(0);
});

test("curves that are shown together are named in the picture, and one alone isn't", async ({ site, page }) => {
  await recordTexts(page);
  await serveCounts(page, () => peaksAt(bins, [300, 500]));
  const names = async (): Promise<string[]> =>
    (await drawnTexts(page)).map(({ text }) => text).filter((text) => text.startsWith("made"));
  await openSpectra(page, site.url, "made@0,1");
  await expect.poll(names).toEqual(["made · ch 0", "made · ch 1"]);
  await openSpectra(page, site.url, "made@0");
  await expect.poll(async () => (await drawnTexts(page)).length).toBeGreaterThan(5);
  expect(await names()).toEqual([]);
});

test("65536 bins of up to 4294967295 counts are drawn and read", async ({ site, page }) => {
  const counts = Array.from({ length: 65_536 }, (_, bin) => (bin % 3 === 0 ? 4_294_967_295 : bin));
  await serveCounts(page, () => counts);
  await page.emulateMedia({ colorScheme: "light" });
  await openSpectra(page, site.url, "made@0");
  const total = counts.reduce((sum, count) => sum + count, 0);
  await expect.poll(() => totals(page)).toEqual([total]);
  await expect.poll(() => inkAt(page, 0.5)).toBeGreaterThan(100);
  const { x, y } = await plotPoint(page, 0.3);
  await page.mouse.move(x, y);
  await expect.poll(async () => (await cursorAt(page)).count).not.toBeNaN();
  const { from, count } = await cursorAt(page);
  expect([from, count]).toEqual([from, counts[from]]);
  await page.locator("[data-test=log]").click();
  await page.locator("[data-test=from]").fill("0");
  await page.locator("[data-test=to]").fill("65535");
  await page.locator("[data-test=add-region]").click();
  await expect.poll(() => shownNumber(page.locator("[data-test=gross]"))).toBe(total);
});

test("a block of the address that isn't there is said to be gone", async ({ site, page }) => {
  await serveCounts(page, () => peaksAt(bins, [300, 500]));
  await openSpectra(page, site.url, "made@0;gone%20one@3");
  await expect.poll(() => page.locator("[data-test=block-gone]").allInnerTexts()).toEqual([
    "The server has no gone one. It isn't shown.",
  ]);
  await page.locator("[data-test=next]").click();
  await expect.poll(() => page.locator("[data-test=block-gone]").count()).toBe(0);
});

test("a fit that can't be loaded any more is said, with what to do", async ({ site, page, mayLog }) => {
  mayLog.push(/404/);
  await serveCounts(page, () => peaksAt(bins, [300, 500]));
  await openSpectra(page, site.url, "made@0");
  await page.route("**/assets/*.js", (route) => route.fulfill({ status: 404 }));
  await page.locator("[data-test=mark-clearest]").click();
  await expect
    .poll(() => page.locator("[data-test=fit-fault]").innerText())
    .toMatch(/^The fit couldn't be loaded; reload the page\. \(.+\)$/);
  await page.unroute("**/assets/*.js");
});

test("the whole chart is seen on a page of 1440 × 900 at 150 %", async ({ site, page }) => {
  await page.setViewportSize({ width: 960, height: 600 });
  await serveCounts(page, () => peaksAt(bins, [300, 500]));
  await openSpectra(page, site.url, "made@0");
  const { y, height } = (await page.locator(".chart canvas").boundingBox())!;
  expect([y > 0, y + height <= 600, height > 200]).toEqual([true, true, true]);
});
