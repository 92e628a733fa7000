import type { Page } from "playwright-core";
import { expect } from "./test";

/** In the order of their keys. */
export const views = [
  "overview",
  "spectra",
  "times",
  "position",
  "image",
  "scope",
  "rates",
  "hv",
  "chain",
] as const;
export type View = (typeof views)[number];

export const shownView = (page: Page): Promise<string | null> => page.locator("main").getAttribute("data-view");

/** By its key, which a page that has just been opened may not hear yet. */
export async function chooseView(page: Page, view: View): Promise<void> {
  await expect
    .poll(async () => {
      await page.keyboard.press(String(views.indexOf(view) + 1));
      return shownView(page);
    })
    .toBe(view);
}
