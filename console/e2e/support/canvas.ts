import type { Locator, Page } from "playwright-core";

/** A text that stands in a canvas, by its place in the pixels of the page. */
export interface DrawnText {
  text: string;
  x: number;
  y: number;
}

type Recording = Window & { drawnTexts?: DrawnText[] };

/** Remembers the texts of a picture from when it is cleared on. To be called before the page is opened. */
export async function recordTexts(page: Page): Promise<void> {
  await page.addInitScript(() => {
    const drawing = CanvasRenderingContext2D.prototype;
    const { clearRect, fillText } = drawing;
    drawing.clearRect = function (...area) {
      (window as Recording).drawnTexts = [];
      clearRect.apply(this, area);
    };
    drawing.fillText = function (text, x, y, ...more) {
      (window as Recording).drawnTexts?.push({ text, x, y });
      fillText.call(this, text, x, y, ...more);
    };
  });
}

/** Those of the picture that was drawn last. */
export function drawnTexts(page: Page): Promise<DrawnText[]> {
  return page.evaluate(() => (window as Recording).drawnTexts ?? []);
}

/** How far down the pixels of nearly this colour are on average in a column of the canvas; NaN where none is. */
export function heightOfColour(canvas: Locator, x: number, colour: number[]): Promise<number> {
  return canvas.evaluate(
    (element: HTMLCanvasElement, { x, colour }) => {
      const { data } = element.getContext("2d")!.getImageData(Math.round(x), 0, 1, element.height);
      const isNear = (row: number): boolean =>
        data[4 * row + 3]! > 200 && colour.every((part, i) => Math.abs(data[4 * row + i]! - part) < 25);
      const rows = Array.from({ length: element.height }, (_, row) => row).filter(isNear);
      return rows.reduce((sum, row) => sum + row, 0) / rows.length;
    },
    { x, colour },
  );
}

/** The colour that an element beside the picture is filled with, as red, green and blue. */
export function fillOf(element: Locator): Promise<number[]> {
  return element.evaluate((one) => getComputedStyle(one).backgroundColor.match(/\d+/g)!.slice(0, 3).map(Number));
}
