import type { Page } from "playwright-core";
import { type Answers, chainAnswers, fakeServer } from "./support/fakeServer";
import { shownNumber } from "./support/reading";
import { expect, test } from "./support/test";
import { chooseView, type View, views } from "./support/views";

const text = (page: Page): Promise<string> => page.locator("#console").innerText();
const alarms = (page: Page): Promise<string> =>
  page
    .locator("[role=alert]")
    .allInnerTexts()
    .then((texts) => texts.join("\n"));

/** Opens every view; each must still say something, and the way to the others must be there. */
async function visitAll(page: Page, look: (view: View) => Promise<void>): Promise<void> {
  for (const view of views) {
    await chooseView(page, view);
    await expect.poll(() => page.locator("main").innerText()).toMatch(/\w/);
    await look(view);
    expect(await page.locator("nav a").count()).toBe(views.length);
  }
}

const someChain = chainAnswers(
  [
    { type: "source", name: "source0", shape: { board: "BOARD0", endpoint: "energy", data_type: "energy" } },
    { type: "spectrum", name: "spectrum0", from: "source0", shape: { channels: 64, bins: 2048, gain: 1 } },
    { type: "tof_histogram", name: "times0", from: "source0", shape: { channels: 64, bins: 600 } },
    { type: "position", name: "position0", from: "source0", shape: { rows: 16, columns: 64 } },
    { type: "image", name: "image0", from: "source0", shape: { rows: 16, columns: 16 } },
    {
      type: "oscilloscope",
      name: "scope0",
      from: "source0",
      shape: { channels: 4, analog: 1, digital: 1, samples: 64 },
    },
    { type: "rate_counters_sink", name: "rates0", from: "source0", shape: { channels: ["A", "T0"] } },
    { type: "hv", name: "hv0", shape: { board: "BOARD0" } },
  ],
  () => 1_000,
);
const chainCommands = new Set(["get_blocks", "get_ledger", "get_run_info"]);

/** The chain is told of, and its blocks answer this to whatever they are asked. */
const allBlocksAnswer =
  (answer: string): Answers =>
  (query, route) =>
    chainCommands.has(query.cmd ?? "") ? someChain(query, route) : answer;

test("a configuration without blocks is said to be one, with what to do", async ({ site, page }) => {
  await fakeServer(page, chainAnswers([], () => 0));
  await page.goto(site.url);
  await visitAll(page, async () => {
    await expect.poll(() => page.locator("main").innerText()).toMatch(/configuration/i);
  });
});

test("empty answers of all blocks are said in place", async ({ site, page }) => {
  await fakeServer(page, allBlocksAnswer(""));
  await page.goto(`${site.url}#/position`);
  await expect.poll(() => alarms(page)).toMatch(/No block answers for .*position0/);
  await visitAll(page, async () => undefined);
});

for (const [what, answer] of [
  ["no JSON", '{"data":[1,2,'],
  ["a number", "7"],
  ["null", "null"],
  ["a list of nothing", "[null]"],
  ["data of another kind", '{"data":"x","status":7,"timestamp":null}'],
  ["texts in place of counts", '[{"data":["x"],"response":true}]'],
  ["more than was asked for", `[${Array(1_000).fill('{"data":[1]}').join()}]`],
  ["a list that isn't one", '{"__proto__":{"data":1},"data":{"length":4294967295}}'],
  ["rows of different lengths", '{"data":[[1,2],[3]]}'],
] as const) {
  test(`blocks that answer ${what} break no view`, async ({ site, page }) => {
    await fakeServer(page, allBlocksAnswer(answer));
    await page.goto(site.url);
    await visitAll(page, async () => undefined);
    await chooseView(page, "position");
    await expect.poll(() => alarms(page)).toContain("position0");
  });
}

test("a server that knows no list of blocks is said to be one", async ({ site, page }) => {
  await fakeServer(page, (query, route) => (query.cmd === "get_blocks" ? "" : someChain(query, route)));
  await page.goto(site.url);
  await expect.poll(() => alarms(page)).toContain("What the server runs isn't known.");
});

test("accounts that make no sense are said, and the next good one is shown", async ({ site, page }) => {
  const bad = ['{"ledger":{"blocks":[{"name":7}]}}', '{"ledger":[]}', "[]", "x".repeat(1_000), '{"ledger":{}}'];
  await fakeServer(page, (query, route) => {
    const broken = query.cmd === "get_ledger" ? bad.shift() : undefined;
    return broken ?? someChain(query, route);
  });
  await page.goto(site.url);
  await expect.poll(() => alarms(page)).toContain("the account of the records");
  await expect.poll(() => alarms(page)).not.toContain("the account of the records");
});

test("an answer that doesn't come is noticed, and one that comes late is shown", async ({ site, page }) => {
  let release = (): void => undefined;
  const released = new Promise<void>((done) => (release = done));
  let accounts = 0;
  await fakeServer(page, async (query, route) => {
    if (query.cmd === "get_ledger" && ++accounts === 3) {
      await released;
    }
    return (await someChain(query, route)) ?? "";
  });
  await page.goto(site.url);
  await expect.poll(() => alarms(page)).toContain("The server doesn't answer.");
  expect(accounts).toBe(3); // nothing more is asked before the answer
  release();
  await expect.poll(() => page.locator("[data-test=unreachable]").count()).toBe(0);
});

test("an answer of far too many numbers is refused in words, and the page goes on", async ({ site, page }) => {
  const huge = `{"data":[[${"1,".repeat(2_000_000)}1],[1]]}`;
  await fakeServer(page, allBlocksAnswer(huge));
  await page.goto(`${site.url}#/image`);
  await expect.poll(() => alarms(page)).toContain("image0");
  expect((await alarms(page)).length).toBeLessThan(1_000);
  await chooseView(page, "chain");
  await expect.poll(() => page.locator("[data-test=node]").count()).toBe(9);
});

test("huge answers that are right are shown to the last count", async ({ site, page }) => {
  const [bins, rows] = [1_000_000, 1_024];
  const chain = chainAnswers(
    [
      { type: "spectrum", name: "wide", shape: { channels: 2, bins, gain: 1 } },
      { type: "position", name: "large", shape: { rows, columns: rows } },
    ],
    () => 0,
  );
  const counts = (length: number): string => `[${Array.from({ length }, (_, i) => i % 10).join()}]`;
  const spectrum = `[{"data":${counts(bins)}}]`;
  const map = `{"data":[${Array(rows).fill(counts(rows)).join()}]}`;
  await fakeServer(page, (query, route) => {
    const answer = query.path?.endsWith("wide") ? spectrum : map;
    return route === "query_by_json" ? answer : chain(query, route);
  });
  const total = page.locator("[data-test=total]");
  await page.goto(`${site.url}#/spectra?show=${encodeURIComponent("wide@1")}`);
  await expect.poll(() => shownNumber(total)).toBe(4.5 * bins);
  await chooseView(page, "position");
  const ofRow = 45 * 102 + 0 + 1 + 2 + 3;
  await expect.poll(() => shownNumber(total)).toBe(rows * ofRow);
  expect(await page.locator("[data-test=size]").innerText()).toBe("1024 × 1024");
});

test("a chain of 300 blocks is drawn, and the page stays usable", async ({ site, page }) => {
  const blocks = Array.from({ length: 300 }, (_, i) => ({
    type: i === 0 ? "source" : "tee",
    name: `block${i}`,
    ...(i === 0 ? { shape: { board: "B" } } : { from: `block${Math.floor((i - 1) / 3)}` }),
  }));
  let count = 0;
  await fakeServer(page, chainAnswers(blocks, () => (count += 100)));
  await page.goto(`${site.url}#/chain`);
  await expect.poll(() => page.locator("[data-test=node]").count()).toBe(301);
  await page.locator("[data-test=block-chooser]").selectOption({ label: "block299 (tee)" });
  await expect.poll(() => page.locator("[data-test=block-panel] h2").innerText()).toBe("block299");
});

test("names that look like markup stay names", async ({ site, page }) => {
  const name = `<img src=x onerror="document.title='broken in'">`;
  await fakeServer(page, chainAnswers([{ type: "source", name, shape: { board: name } }], () => 1));
  await page.goto(`${site.url}#/chain`);
  await expect.poll(() => page.locator("[data-test=node]").count()).toBe(2);
  await visitAll(page, async () => undefined);
  expect(await page.title()).not.toBe("broken in");
  expect(await page.locator("#console img").count()).toBe(0);
  expect(await text(page)).toContain(name);
});
