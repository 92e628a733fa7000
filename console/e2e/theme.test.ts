import type { Page } from "playwright-core";
import { fillOf } from "./support/canvas";
import { openSpectra, peaksAt, serveCounts } from "./support/histograms";
import { expect, test } from "./support/test";

const button = (page: Page) => page.getByRole("button", { name: /^Colours: / });
const chosen = (page: Page): Promise<string | null> => button(page).getAttribute("aria-label");
const ground = (page: Page): Promise<number[]> => fillOf(page.locator("html"));

/** Whether the plot holds a curve of nearly this colour: lines between pixels are part clear. */
function isDrawnIn(page: Page, colour: number[]): Promise<boolean> {
  return page.locator(".u-wrap canvas").evaluate((canvas: HTMLCanvasElement, colour) => {
    const { data } = canvas.getContext("2d")!.getImageData(0, 0, canvas.width, canvas.height);
    const isColour = (i: number): boolean =>
      data[i + 3]! > 60 && colour.every((part, k) => Math.abs(data[i + k]! - part) < 15);
    return Array.from({ length: data.length / 4 }, (_, pixel) => 4 * pixel).filter(isColour).length > 20;
  }, colour);
}

/** The colour of the first curve, as the list beside the plot has it. */
function curveColour(page: Page): Promise<number[]> {
  const swatch = page.locator("[data-test=curves] .swatch").first();
  return swatch.evaluate((line) => getComputedStyle(line).borderTopColor.match(/\d+/g)!.slice(0, 3).map(Number));
}

interface Colours {
  ground: number[];
  curve: number[];
  /** Whether the canvas has the curve's. */
  isDrawn: boolean;
}

async function coloursOf(page: Page): Promise<Colours> {
  const curve = await curveColour(page);
  return { ground: await ground(page), curve, isDrawn: await isDrawnIn(page, curve) };
}

/** Once the canvas has them. */
async function drawnColours(page: Page): Promise<Colours> {
  await expect.poll(async () => (await coloursOf(page)).isDrawn).toBe(true);
  return coloursOf(page);
}

test("the button of colours goes round, page and canvas follow, a reload keeps it", async ({ site, page }) => {
  await page.emulateMedia({ colorScheme: "light" });
  await serveCounts(page, () => peaksAt(200, [100, 500]));
  await openSpectra(page, site.url, "made@0");
  expect(await chosen(page)).toBe("Colours: as the system");
  const light = await drawnColours(page);

  await page.emulateMedia({ colorScheme: "dark" });
  await expect.poll(() => ground(page)).not.toEqual(light.ground);
  await expect.poll(() => curveColour(page)).not.toEqual(light.curve);
  const dark = await drawnColours(page);
  expect(await isDrawnIn(page, light.curve)).toBe(false);
  expect(Math.max(...dark.ground)).toBeLessThan(Math.min(...light.ground));

  await button(page).click();
  await expect.poll(() => chosen(page)).toBe("Colours: light");
  await expect.poll(() => coloursOf(page)).toEqual(light);

  await page.emulateMedia({ colorScheme: "light" });
  await button(page).click();
  await expect.poll(() => chosen(page)).toBe("Colours: dark");
  await expect.poll(() => coloursOf(page)).toEqual(dark);
  await page.reload();
  await expect.poll(() => chosen(page)).toBe("Colours: dark");
  await expect.poll(() => coloursOf(page)).toEqual(dark);

  await button(page).click();
  await expect.poll(() => chosen(page)).toBe("Colours: as the system");
  await expect.poll(() => coloursOf(page)).toEqual(light);
});
