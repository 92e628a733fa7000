import type { Page } from "playwright-core";
import { chainAnswers, fakeServer } from "./support/fakeServer";
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

test("while the server is away one banner says so, nothing seems known, nothing is pressed in vain", async ({
  acquisition,
  site,
  page,
  mayLog,
}) => {
  mayLog.push(lostConnection);
  await page.goto(site.url);
  const pulses = (): Promise<string[]> => page.locator("[data-test=pulse]").allInnerTexts();
  await expect.poll(async () => (await pulses()).every((text) => text === "data flow")).toBe(true);
  const buttons = ["[data-test=run-start]", "[data-test=reset-spectra]", "section.live button:has-text('Start')"];
  const enabled = (): Promise<boolean[]> => Promise.all(buttons.map((button) => page.locator(button).isEnabled()));
  await expect.poll(enabled).toEqual([true, true, true]);
  await acquisition.kill();
  await expect.poll(() => banner(page)).toContain("The server can't be reached");
  await expect.poll(async () => new Set(await pulses())).toEqual(new Set(["not known"]));
  await expect.poll(enabled).toEqual([false, false, false]);
  const states = await page.locator("[data-test=run-status]").allInnerTexts();
  expect(new Set(states)).toEqual(new Set(["not known, was stopped"]));
  expect(await page.locator("section.live [title]:has-text('Start')").first().getAttribute("title")).toContain(
    "doesn't answer",
  );
  await expect.poll(() => page.title()).toBe("⚠ not reached – korvax");
  await expect.poll(() => page.locator("[data-test=age]").count()).toBeGreaterThan(2);
  await expect.poll(() => page.locator("[role=alert]").count()).toBe(1);
  await acquisition.start();
  await expect.poll(enabled).toEqual([true, true, true]);
  await expect.poll(async () => (await pulses()).every((text) => text === "data flow")).toBe(true);
  expect(await page.locator("[role=alert]").count()).toBe(0);
});

test("what is lost is red while it is lost, and quiet later", async ({ site, page }) => {
  let dropped = 0;
  const source = {
    type: "source",
    name: "source0",
    shape: { board: "BOARD0" },
    queue: () => ({ dropped, waiting: 0 }),
  };
  await fakeServer(page, chainAnswers([source], () => 1_000));
  await page.clock.install();
  await page.goto(site.url);
  const account = page.locator("[data-test=account]");
  const lost = page.locator("[data-test=source-source0] [data-test=lost]");
  const soon = (read: () => Promise<unknown>) =>
    expect.poll(async () => {
      await page.clock.runFor(1_000);
      return read();
    });
  await soon(() => account.allInnerTexts()).toEqual(["Nothing is lost since the server started."]);
  dropped = 1_200;
  const losing = expect.stringMatching(/^⚠ source0 lost 1.200 full queue/);
  await soon(() => account.allInnerTexts()).toEqual([losing]);
  expect(await account.getAttribute("class")).toBe("alarm");
  expect(await lost.getAttribute("class")).toBe("number alarm");
  await page.clock.runFor(5_000);
  expect(await account.getAttribute("class")).toBe("alarm");
  await soon(() => account.getAttribute("class")).toBe("warn");
  expect(await account.innerText()).toMatch(/^source0 lost 1.200 full queue since the server's start, last at \d/);
  expect(await lost.getAttribute("class")).toBe("number warn");
  dropped = 1_201;
  await soon(() => account.getAttribute("class")).toBe("alarm");
});

test("what was lost before the page was opened is no alarm", async ({ site, page }) => {
  const source = { type: "source", name: "source0", shape: {}, queue: () => ({ dropped: 7, waiting: 0 }) };
  await fakeServer(page, chainAnswers([source], () => 1_000));
  await page.goto(site.url);
  const account = page.locator("[data-test=account]");
  const text = "source0 lost 7 full queue since the server's start, none while this page looked on";
  await expect.poll(() => account.allInnerTexts()).toEqual([text]);
  expect(await account.getAttribute("class")).toBe("warn");
});
