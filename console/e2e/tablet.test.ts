import type { Page } from "playwright-core";
import { expect, test as base } from "./support/test";
import { shownView, views } from "./support/views";

const leastHeight = 34; // px, for fingers

const test = base.extend<{ page: Page }>({
  page: async ({ browser }, use) => {
    const viewport = { width: 820, height: 1180 };
    const page = await browser.newPage({ viewport, hasTouch: true, isMobile: true });
    const errors: string[] = [];
    page.on("pageerror", (error) => errors.push(String(error)));
    await use(page);
    await page.close();
    expect(errors).toEqual([]);
  },
});

for (const [i, view] of views.entries()) {
  test(`the view ${view} opens by touch, fits a tablet's width, and is made for fingers`, async ({
    acquisition: _,
    site,
    page,
  }) => {
    await page.goto(`${site.url}#/${views[(i + 1) % views.length]}`);
    await page.locator("nav a").nth(i).tap();
    await expect.poll(() => shownView(page)).toBe(view);
    await expect.poll(() => page.locator("main button:visible, main select:visible").count()).toBeGreaterThan(0);
    const excess = await page.evaluate(() =>
      [document.documentElement, document.querySelector("main")!].map((one) => one.scrollWidth - one.clientWidth),
    );
    expect(excess).toEqual([0, 0]);
    const pressed = "button:visible, select:visible, input:not([type=checkbox]):not([type=radio]):visible";
    const low = await page.locator(pressed).evaluateAll(
      (elements, least) =>
        elements
          .filter((element) => element.getBoundingClientRect().height < least)
          .map((element) => element.outerHTML.slice(0, 80)),
      leastHeight,
    );
    expect(low).toEqual([]);
  });
}
