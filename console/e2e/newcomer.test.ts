import type { Page } from "playwright-core";
import { expect, test } from "./support/test";

/** "7.04 ± 0.05 %" */
interface Resolution {
  value: number;
  error: number;
}

async function resolution(page: Page): Promise<Resolution> {
  const text = (await page.locator("[data-test=resolution]").allInnerTexts()).join();
  const [, value, error] = /([\d.]+) ± ([\d.]+)/.exec(text) ?? [];
  return { value: Number(value ?? NaN), error: Number(error ?? NaN) };
}

/** What the simulated detectors resolve at 662 keV, in percent. */
const simulated = 7;

test("from the empty page to the resolution of the 662 keV line, by what the page itself says", async ({
  acquisition: _,
  site,
  page,
}) => {
  await page.goto(site.url);
  await page.getByRole("link", { name: "Spectra" }).click();
  await page.getByRole("button", { name: "Start", exact: true }).click();
  const known = page.getByLabel("This line is at");
  await expect
    .poll(async () => {
      await page.getByRole("button", { name: "Mark the clearest peak" }).click();
      return (await known.count()) > 0;
    })
    .toBe(true);
  await expect.poll(async () => (await resolution(page)).error).toBeLessThan(0.25);
  await known.fill("661.7");
  await page.getByRole("button", { name: "Calibrate" }).click();
  const energy = page.locator("[data-test=fit-mean]");
  await expect.poll(() => energy.innerText()).toMatch(/^66[12]\.\d+ ± [\d.]+ keV$/);
  const { value, error } = await resolution(page);
  expect(Math.abs(value - simulated)).toBeLessThan(4 * error);
});
