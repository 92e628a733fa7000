import type { Page } from "playwright-core";
import { cellMiddles, map, mapNumbers, mapReadout, mapTotal, serveMap } from "./support/maps";
import { shownNumber, sumOf } from "./support/reading";
import { expect, test } from "./support/test";

/** The map on the page, in the light theme and the grey colours, whose brightness tells the count. */
async function openMap(page: Page, url: string, counts: number[][], query: string): Promise<void> {
  await page.emulateMedia({ colorScheme: "light" });
  await serveMap(page, "position", () => counts);
  await page.goto(`${url}#/position?colours=grey&${query}`);
  await expect.poll(() => shownNumber(mapTotal(page))).toBe(sumOf(counts.flat()));
}

type Pixel = [red: number, green: number, blue: number];

/** A pixel of each cell, from the top left on. */
async function cellsDrawn(page: Page): Promise<Pixel[][]> {
  const { x, y } = await cellMiddles(page, map);
  return page.locator("[data-test=map] canvas").evaluate(
    (canvas: HTMLCanvasElement, { x, y }) => {
      const ctx = canvas.getContext("2d")!;
      const pixel = (across: number, down: number): Pixel =>
        [...ctx.getImageData(across, down, 1, 1).data].slice(0, 3) as Pixel;
      return y.map((down) => x.map((across) => pixel(across, down)));
    },
    { x, y },
  );
}

/** The grey of a lightness of CIE 1976 (L*), as sRGB has it. */
function greyOf(lightness: number): number {
  const light = ((lightness + 16) / 116) ** 3;
  return 255 * (1.055 * light ** (1 / 2.4) - 0.055);
}

const [darkest, lightest] = [24, 93];
/** Cells without counts are white or nearly. */
const emptyFrom = 225;

interface Scale {
  name: string;
  query: string;
  shareOf: (count: number) => number;
}

const within = (share: number): number => Math.min(1, Math.max(0, share));
const scales: Scale[] = [
  { name: "linear", query: "z=lin", shareOf: (count) => count / 100 },
  { name: "logarithmic", query: "z=log", shareOf: (count) => Math.log(count / 0.5) / Math.log(100 / 0.5) },
  { name: "fixed", query: "z=lin&range=5_20", shareOf: (count) => within((count - 5) / 15) },
];

for (const { name, query, shareOf } of scales) {
  for (const rows of ["up", "down"]) {
    test(`each cell has the colour of its count on a ${name} scale, rows ${rows}`, async ({ site, page }) => {
      await openMap(page, site.url, map, `${query}&rows=${rows}`);
      const isDrawn = async (): Promise<boolean> => (await cellsDrawn(page)).flat(2).some((part) => part < 200);
      await expect.poll(isDrawn).toBe(true);
      const drawn = await cellsDrawn(page);
      const expected = rows === "up" ? [...map].reverse() : map;
      for (const [i, row] of expected.entries()) {
        for (const [k, count] of row.entries()) {
          const grey = greyOf(darkest + (lightest - darkest) * shareOf(count));
          const far = drawn[i]![k]!.map((part) => Math.abs(part - grey));
          expect([i, k, count === 0 ? Math.min(...drawn[i]![k]!) > emptyFrom : Math.max(...far) < 2]).toEqual([
            i, k, true,
          ]);
        }
      }
    });
  }
}

for (const rows of ["up", "down"]) {
  test(`the mouse reads the cell below it, rows ${rows}`, async ({ site, page }) => {
    await openMap(page, site.url, map, `rows=${rows}`);
    const { x, y } = await cellMiddles(page, map);
    const place = page.locator("[data-test=map] canvas");
    for (const [i, down] of y.entries()) {
      for (const [column, across] of x.entries()) {
        await place.hover({ position: { x: across, y: down } });
        const row = rows === "up" ? map.length - 1 - i : i;
        const cell = { row, column, counts: map[row]![column]! };
        await expect.poll(async () => mapNumbers(await mapReadout(page))).toEqual(cell);
      }
    }
    await page.mouse.move(1, 1);
    await expect.poll(() => mapReadout(page)).toMatch(/^Arrow keys/);
  });
}

const size = 16;
const large = Array.from({ length: size }, (_, row) => Array.from({ length: size }, (_, k) => row * size + k + 1));

test("keys zoom the map, move it and show all of it again", async ({ site, page }) => {
  await openMap(page, site.url, large, "rows=down");
  const shown = (): string | null => new URLSearchParams(page.url().split("?")[1]).get("at");
  const press = async (key: string, expected: string | null): Promise<void> => {
    await page.keyboard.press(key);
    await expect.poll(shown).toBe(expected);
  };
  await page.locator("[data-test=map]").focus();
  await press("+", "2.4_13.6_2.4_13.6"); // 0.7 of the width, about the middle
  await press("Shift+ArrowRight", "3.52_14.72_2.4_13.6"); // by a tenth
  await press("Shift+ArrowUp", "3.52_14.72_1.28_12.48");
  const middle = { x: (3.52 + 14.72) / 2, y: (1.28 + 12.48) / 2 };
  const { x, y } = await cellMiddles(page, [[0]]);
  await page.locator("[data-test=map] canvas").hover({ position: { x: x[0]!, y: y[0]! } });
  const [row, column] = [Math.floor(middle.y), Math.floor(middle.x)];
  const cell = { row, column, counts: large[row]![column]! };
  await expect.poll(async () => mapNumbers(await mapReadout(page))).toEqual(cell);
  const inside = large.slice(1, 13).map((all) => all.slice(3, 15));
  const counted = page.locator("[data-test=shown]");
  await expect.poll(() => shownNumber(counted)).toBe(sumOf(inside.flat()));
  await press("Shift+ArrowLeft", "2.4_13.6_1.28_12.48");
  await press("Shift+ArrowDown", "2.4_13.6_2.4_13.6");
  await press("-", null);
  await press("+", "2.85_14.05_1.95_13.15"); // about the cell of the cursor
  await press("Home", null);
});
