import { numberIn, shownNumber } from "./support/reading";
import { expect, test } from "./support/test";

test("the overview's sources have received what the ledger says", async ({
  acquisition: _,
  site,
  page,
  client,
}) => {
  await page.goto(site.url);
  await page.locator("[data-test=sources] tbody tr").first().waitFor();
  await client.stopBoards();
  const sources = (await client.ledger()).filter(({ type }) => type === "source");
  expect(sources.length).toBeGreaterThan(0);
  expect(await page.locator("[data-test=sources] tbody tr").count()).toBe(sources.length);
  for (const { name, received } of sources) {
    expect(received).toBeGreaterThan(0);
    const shown = page.locator(`[data-test=source-${name}] [data-test=received]`);
    await expect.poll(() => shownNumber(shown)).toBe(received);
  }
});

test("a source whose board gives nothing more is said to be silent", async ({
  acquisition: _,
  site,
  page,
  client,
}) => {
  await page.goto(site.url);
  const pulse = page.locator("[data-test=source-source0] [data-test=pulse]");
  await expect.poll(() => pulse.getAttribute("class")).toBe("good");
  await client.stopBoards();
  await expect.poll(() => pulse.innerText()).toMatch(/no data for \d+ s/i);
  await expect.poll(() => pulse.getAttribute("class")).toBe("alarm");
  await client.startBoards();
  await expect.poll(() => pulse.getAttribute("class")).toBe("good");
});

test("the live spectrum leads to the same channel in the spectra", async ({ acquisition: _, site, page }) => {
  await page.goto(site.url);
  const live = page.locator("section.live");
  await live.getByRole("button", { name: "Start", exact: true }).click();
  await expect.poll(() => live.getByRole("heading").innerText()).toMatch(/channel [1-9]/);
  const channel = numberIn((await live.getByRole("heading").innerText()).replace(/.*channel /, ""));
  await live.getByRole("link").click();
  const curves = page.locator("[data-test=curves] tbody");
  await expect.poll(() => curves.innerText()).toMatch(new RegExp(`spectrum0 · ch ${channel}\\b`));
});
