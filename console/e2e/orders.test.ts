import type { Page } from "playwright-core";
import { type Answers, chainAnswers, fakeServer, type Query } from "./support/fakeServer";
import { expect, test } from "./support/test";

/** The orders that reached the server, and what answers those whose turn it was. */
interface Orders {
  heard: string[];
  answers: ((text: string) => void)[];
}

const commandOf = (query: Query): string => query.args?.[0]?.cmd ?? query.cmd ?? "";
const isOrder = (query: Query): boolean => /^(hv_|start_dump)/.test(commandOf(query));

/** A server with two boards that answers an order when the test does. */
async function serverThatWaits(page: Page): Promise<Orders> {
  const others = chainAnswers([], () => 0);
  const block = (name: string): object => ({ type: "hv", name, path: `Hardware/${name}`, links: [], outputs: 0 });
  const orders: Orders = { heard: [], answers: [] };
  const answers: Answers = (query, route) => {
    if (isOrder(query)) {
      return new Promise((answer) => orders.answers.push(answer));
    }
    switch (commandOf(query)) {
      case "get_blocks":
        return JSON.stringify({ blocks: [block("LEFT"), block("RIGHT")] });
      case "get_all_ch_values":
        return '{"response":"ok","HVState":[off]}';
      default:
        return others(query, route);
    }
  };
  const hear = (query: Query): void => {
    if (isOrder(query)) {
      orders.heard.push(`${commandOf(query)} ${query.path ?? ""}`.trim());
    }
  };
  await fakeServer(page, answers, hear);
  return orders;
}

async function order(page: Page, button: string): Promise<void> {
  await page.locator(`[data-test=${button}]`).click();
  await page.locator("[data-test=confirm-action]").click();
}

test("off can be ordered while another order isn't answered, on can't", async ({ site, page }) => {
  const orders = await serverThatWaits(page);
  await page.goto(`${site.url}#/hv`);
  const done = page.locator("[data-test=hv-done]");
  await order(page, "hv-on-LEFT");
  await expect.poll(() => orders.heard).toEqual(["hv_global_on Hardware/LEFT"]);
  for (const on of ["hv-on-LEFT", "hv-on-RIGHT", "hv-all-on"]) {
    await expect.poll(() => page.locator(`[data-test=${on}]`).isDisabled()).toBe(true);
  }
  await order(page, "hv-all-off");
  await expect.poll(() => orders.heard.at(-1)).toBe("hv_off");
  orders.answers[1]!('[{"response": true}]');
  await expect.poll(() => done.innerText()).toContain("“off” was sent to LEFT, RIGHT");
  expect(await page.locator("[data-test=hv-on-LEFT]").isDisabled()).toBe(true);
  // The answer of what came before takes nothing back of what is said.
  orders.answers[0]!("");
  await expect.poll(() => page.locator("[data-test=hv-on-LEFT]").isDisabled()).toBe(false);
  expect(await done.innerText()).toContain("“off” was sent to LEFT, RIGHT");
});

test("off is sent before the on of its board is answered, and never overtakes it", async ({ site, page }) => {
  const orders = await serverThatWaits(page);
  await page.goto(`${site.url}#/hv`);
  await order(page, "hv-on-LEFT");
  await order(page, "hv-off-LEFT");
  await expect.poll(() => orders.heard).toEqual(["hv_global_on Hardware/LEFT", "hv_global_off Hardware/LEFT"]);
  // The server takes one after the other.
  expect(orders.answers).toHaveLength(1);
  orders.answers[0]!("no");
  await expect.poll(() => orders.answers.length).toBe(2);
  orders.answers[1]!("");
  await expect.poll(() => page.locator("[data-test=hv-done]").innerText()).toContain("“off” was sent to LEFT");
  expect(await page.locator("[data-test=hv-fault]").innerText()).toMatch(/^“on” for LEFT: .* answers no where/);
});

test("an order that fails on a view that was left is told on every view, until it is read", async ({
  site,
  page,
}) => {
  const orders = await serverThatWaits(page);
  await page.goto(`${site.url}#/overview`);
  const told = page.locator("[data-test=late-faults]");
  await page.locator("[data-test=run-id-input]").fill("night 7");
  await page.locator("[data-test=run-start]").click();
  await expect.poll(() => orders.heard).toEqual(["start_dump"]);
  await page.keyboard.press("8");
  await page.locator("main[data-view=hv]").waitFor();
  await order(page, "hv-off-RIGHT");
  await expect.poll(() => orders.answers.length).toBe(2);
  await page.keyboard.press("6");
  await page.locator("main[data-view=scope]").waitFor();
  expect(await told.count()).toBe(0);
  orders.answers[0]!('[{"response": "Existing Folder"}]');
  await expect.poll(() => told.locator("p").allInnerTexts()).toEqual([
    expect.stringMatching(/^What was done on “Overview” went wrong.*: There is a folder of run night 7/),
  ]);
  orders.answers[1]!("no");
  await expect.poll(() => told.locator("p").last().innerText()).toContain("“High voltage” went wrong");
  expect(await told.locator("p").last().innerText()).toContain("“off” for RIGHT");
  await page.keyboard.press("1");
  await page.locator("main[data-view=overview]").waitFor();
  expect(await told.locator("p").count()).toBe(2);
  await told.locator("button").click();
  await expect.poll(() => told.count()).toBe(0);
});

test("an order that fails while its view is shown is told there alone", async ({ site, page }) => {
  const orders = await serverThatWaits(page);
  await page.goto(`${site.url}#/hv`);
  await order(page, "hv-off-RIGHT");
  await expect.poll(() => orders.answers.length).toBe(1);
  orders.answers[0]!("no");
  await expect.poll(() => page.locator("[data-test=hv-fault]").innerText()).toContain("“off” for RIGHT");
  expect(await page.locator("[data-test=late-faults]").count()).toBe(0);
});

test("the focus is back where it was, whatever a question was answered", async ({ site, page }) => {
  const orders = await serverThatWaits(page);
  await page.goto(`${site.url}#/hv`);
  const focused = (): Promise<string | null | undefined> =>
    page.evaluate(() => document.activeElement?.getAttribute("data-test"));
  for (const button of ["hv-off-LEFT", "hv-on-RIGHT", "hv-all-off"]) {
    for (const key of ["Enter", "Escape"]) {
      await page.locator(`[data-test=${button}]`).focus();
      await page.keyboard.press("Enter");
      await page.locator("dialog[open] :focus").waitFor();
      await page.keyboard.press(key);
      await expect.poll(() => page.locator("dialog").count()).toBe(0);
      await expect.poll(focused).toBe(button);
    }
  }
  for (const button of ["hv-off-LEFT", "hv-all-off", "hv-on-RIGHT"]) {
    await page.locator(`[data-test=${button}]`).focus();
    await page.keyboard.press("Enter");
    await page.locator("dialog[open] :focus").waitFor();
    await page.keyboard.press("Tab");
    await page.keyboard.press("Enter");
    await expect.poll(() => page.locator("dialog").count()).toBe(0);
    await expect.poll(() => orders.answers.length).toBe(1);
    orders.answers.pop()!(button === "hv-all-off" ? '[{"response": true}]' : "");
    await expect.poll(() => page.locator("[data-test=hv-done]").count()).toBe(1);
    await expect.poll(focused).toBe(button);
  }
});

test("the focus doesn't come back to where the operator has left", async ({ site, page }) => {
  const orders = await serverThatWaits(page);
  await page.goto(`${site.url}#/hv`);
  await page.locator("[data-test=hv-on-LEFT]").focus();
  await page.keyboard.press("Enter");
  await page.locator("dialog[open] :focus").waitFor();
  await page.keyboard.press("Tab");
  await page.keyboard.press("Enter");
  await expect.poll(() => orders.answers.length).toBe(1);
  await page.locator("[data-test=hv-off-RIGHT]").focus();
  orders.answers[0]!("");
  await expect.poll(() => page.locator("[data-test=hv-on-LEFT]").isEnabled()).toBe(true);
  expect(await page.locator("[data-test=hv-off-RIGHT]:focus").count()).toBe(1);
});
