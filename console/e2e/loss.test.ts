import type { Page } from "playwright-core";
import { expect, lostConnection, test } from "./support/test";

const banner = (page: Page): Promise<string> =>
  page
    .locator("[data-test=unreachable]")
    .allInnerTexts()
    .then((texts) => texts.join());

const status = (page: Page): Promise<string> => page.locator("[data-test=status]").innerText();
const isFlowing = /[1-9][\d. ]*[kM]? records\/s/;

test("a server that was killed is said to be out of reach, and the page goes on when it is back", async ({
  acquisition,
  site,
  page,
  mayLog,
}) => {
  mayLog.push(lostConnection);
  await page.goto(site.url);
  await expect.poll(() => status(page)).toMatch(isFlowing);
  await acquisition.kill();
  await expect.poll(() => banner(page)).toMatch(/The server can't be reached: .*All that is shown .* again\./);
  await acquisition.start();
  await expect.poll(() => banner(page)).toBe("");
  await expect.poll(() => status(page)).toMatch(isFlowing);
});

test("a server that stands still with its connections open is noticed, too", async ({
  acquisition,
  site,
  page,
  mayLog,
}) => {
  mayLog.push(lostConnection);
  await page.goto(site.url);
  await expect.poll(() => status(page)).toMatch(isFlowing);
  acquisition.pause();
  await expect.poll(() => banner(page)).toContain("The server doesn't answer.");
  acquisition.resume();
  await expect.poll(() => banner(page)).toBe("");
});

test("a page that is opened before the server runs says so, and begins when it does", async ({
  acquisition,
  site,
  page,
  mayLog,
}) => {
  mayLog.push(lostConnection);
  await acquisition.kill();
  await page.goto(site.url);
  await expect.poll(() => banner(page)).toContain("Nothing was read yet.");
  await acquisition.start();
  await expect.poll(() => banner(page)).toBe("");
  await expect.poll(() => status(page)).toMatch(isFlowing);
});

test("a block that disappears from the configuration is said to be gone", async ({
  acquisition,
  site,
  page,
  mayLog,
}) => {
  mayLog.push(lostConnection);
  await page.goto(`${site.url}#/chain`);
  const node = page.locator("[data-test=node][data-name=image0]");
  await node.click();
  await page.locator("[data-test=block-panel]").waitFor();
  await acquisition.kill();
  await acquisition.start((configuration) => {
    const chain = configuration.processing[0]!.filter_chain[0]!;
    chain.chain = chain.chain.filter(({ name }) => name !== "image0");
  });
  await expect.poll(() => page.locator("[data-test=block-gone]").allInnerTexts()).toHaveLength(1);
  expect(await node.count()).toBe(0);
});
