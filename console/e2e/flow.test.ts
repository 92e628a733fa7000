import { expect, test } from "./support/test";
import { chooseView, shownView, views } from "./support/views";

test("the page opens on the overview, and data flow", async ({ acquisition: _, site, page }) => {
  await page.goto(site.url);
  expect(await shownView(page)).toBe("overview");
  await expect.poll(() => page.locator("[data-test=status]").innerText()).toMatch(/[1-9][\d. ]*[kM]? records\/s/);
  expect(await page.locator("[data-test=unreachable]").count()).toBe(0);
});

test("the digits choose the views, the address keeps them, and back goes back", async ({
  acquisition: _,
  site,
  page,
}) => {
  await page.goto(site.url);
  for (const view of [...views].reverse()) {
    await chooseView(page, view);
  }
  await page.goBack();
  await expect.poll(() => shownView(page)).toBe("spectra");
  await page.reload();
  expect(await shownView(page)).toBe("spectra");
});

test("every view opens without a fault, also by the mouse", async ({ acquisition: _, site, page }) => {
  await page.goto(site.url);
  for (const link of await page.locator("nav a").all()) {
    await link.click();
    await expect.poll(() => link.getAttribute("aria-current")).toBe("page");
    await expect.poll(() => page.locator("main > *").count()).toBeGreaterThan(0);
    expect(await page.locator("[data-test=fault]").allInnerTexts()).toEqual([]);
  }
});
