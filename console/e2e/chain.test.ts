import type { Page } from "playwright-core";
import { chainAnswers, fakeServer } from "./support/fakeServer";
import type { LedgerEntry } from "./support/question";
import { expect, test } from "./support/test";

interface Described {
  name: string;
  type: string;
  links: { from: string; pin: number }[];
  shape: { board?: string };
}

const attributes = (page: Page, selector: string, ...names: string[]): Promise<string[]> =>
  page.locator(selector).evaluateAll(
    (elements, names) => elements.map((element) => names.map((name) => element.getAttribute(name)).join(" ")),
    names,
  );

test("the chain shows every block and board, and every link", async ({ acquisition: _, site, page, client }) => {
  await page.goto(`${site.url}#/chain`);
  await page.locator("[data-test=node]").first().waitFor();
  const { blocks } = await client.command<{ blocks: Described[] }>("get_blocks");
  const boards = new Set(blocks.flatMap(({ shape }) => shape.board ?? []));
  const names = await attributes(page, "[data-test=node]", "data-name");
  expect(names.sort()).toEqual([...blocks.map(({ name }) => name), ...boards].sort());

  const expected = blocks.flatMap(({ name, links, shape }) => [
    ...(shape.board === undefined ? [] : [`${shape.board} ${name} -1`]),
    ...links.map(({ from }, input) => `${from} ${name} ${input}`),
  ]);
  const edges = await attributes(page, "[data-test=edge]", "data-from", "data-to", "data-input");
  expect(edges.sort()).toEqual(expected.sort());
});

test("records flow on the edges while the boards run", async ({ acquisition: _, site, page }) => {
  await page.goto(`${site.url}#/chain`);
  const rate = page.locator("[data-test=edge-label][data-from=source0] [data-test=rate]").first();
  await expect.poll(() => rate.innerHTML()).toMatch(/^[1-9].*\/s$/);
});

test("a block's account is what the server counted", async ({ acquisition: _, site, page, client }) => {
  await page.goto(`${site.url}#/chain`);
  await page.locator("[data-test=node]").first().waitFor();
  await client.stopBoards();
  for (const name of ["source0", "tee0", "spectrum0", "sorter1", "rates1", "scope1", "dumper1"]) {
    await page.locator(`[data-test=node][data-name=${name}]`).click();
    const entry = (await client.ledger()).find((one) => one.name === name)!;
    await expect.poll(() => figuresOf(page)).toEqual(figuresIn(entry));
  }
});

/** The figures of the chosen block that don't depend on words. */
async function figuresOf(page: Page): Promise<Record<string, number>> {
  const rows = await attributes(page, "[data-test=account] dd[data-figure]", "data-value", "data-figure");
  const figures = Object.fromEntries(rows.map((row) => [row.replace(/^\S+ /, ""), Number(row.split(" ")[0])]));
  return { received: figures["received"]!, waiting: figures["waiting inside"]!, sum: sum(Object.values(figures)) };
}

function figuresIn(entry: LedgerEntry): Record<string, number> {
  const { received, waiting, became, made, missing, outputs } = entry;
  const passedOn = outputs.length > 0 ? made : 0;
  const dropped = sum(outputs.map((output) => output.dropped));
  const all = [received, waiting, ...Object.values(became), missing, passedOn, dropped];
  return { received, waiting, sum: sum(all) };
}

function sum(numbers: number[]): number {
  return numbers.reduce((a, b) => a + b, 0);
}

test("drops and queues that nobody empties are said in words at their edges", async ({ site, page }) => {
  let dropped = 0;
  const blocks = [
    { type: "source", name: "overrun", queue: () => ({ dropped: (dropped += 100), waiting: 0 }) },
    { type: "source", name: "stuck", queue: () => ({ dropped: 0, waiting: 30 }) },
    { type: "source", name: "fine" },
    ...["overrun", "stuck", "fine"].map((from) => ({ type: "spectrum", name: `behind_${from}`, from })),
  ];
  await fakeServer(page, chainAnswers(blocks, () => 1_000));
  await page.goto(`${site.url}#/chain`);
  const edge = (from: string) => page.locator(`[data-test=edge][data-from=${from}]`);
  await expect.poll(() => edge("overrun").getAttribute("data-trouble")).toMatch(/^drops \d.*\/s$/);
  await expect.poll(() => edge("stuck").getAttribute("data-trouble")).toBe("stuck, 30 wait");
  expect(await edge("fine").getAttribute("data-trouble")).toBeNull();
  expect(await page.locator("text.trouble").allInnerTexts()).toHaveLength(2);
  await page.locator("[data-test=node][data-name=overrun]").click();
  const loss = page.locator("[data-test=account] .alarm").first();
  await expect.poll(() => loss.innerText()).toContain("dropped at full queues");
});

test("the rates on the edges are the records between two accounts by the time between them", async ({
  site,
  page,
}) => {
  const counts = { received: 1_000, dropped: 7 };
  const aSecond = { received: 450, dropped: 30 };
  const blocks = [
    {
      type: "source",
      name: "fast",
      shape: { board: "B" },
      queue: () => ({ dropped: counts.dropped, waiting: 0 }),
    },
    { type: "source", name: "fine" },
    { type: "spectrum", name: "behind_fast", from: "fast" },
    { type: "spectrum", name: "behind_fine", from: "fine" },
  ];
  const chain = chainAnswers(blocks, () => counts.received);
  await fakeServer(page, (query, route) => {
    const answer = chain(query, route);
    if (query.cmd === "get_ledger") {
      counts.received += aSecond.received;
      counts.dropped += aSecond.dropped;
    }
    return answer;
  });
  await page.clock.install();
  await page.clock.pauseAt(Date.now() + 1_000);
  // That a clock can be set, or stand still, changes no rate.
  await page.addInitScript(() => {
    const noon = new Date(2026, 0, 1, 12).getTime();
    Date.now = () => noon;
  });
  await page.goto(`${site.url}#/chain`);
  const after = (ms: number, read: () => Promise<unknown>) =>
    expect.poll(async () => {
      await page.clock.runFor(ms);
      return read();
    });
  const label = (from: string) => page.locator(`[data-test=edge-label][data-from=${from}]`);
  const texts = (from: string): Promise<string[]> => label(from).locator("text").allTextContents();
  const edge = page.locator("[data-test=edge][data-from=fast]");
  await after(2, () => texts("B")).toEqual(["–"]);
  expect(await texts("fast")).toEqual(["–", "⚠ 7 dropped"]);

  await after(1_000, () => texts("B")).toEqual(["450/s"]);
  expect(await texts("fine")).toEqual(["450/s"]);
  expect(await texts("fast")).toEqual(["450/s", "⚠ drops 30/s"]);
  expect(await edge.getAttribute("class")).toBe("edge troubled");
  const [red, green, blue] = await label("fast")
    .locator("text.trouble")
    .evaluate((text) => getComputedStyle(text).fill.match(/\d+/g)!.map(Number));
  expect(red).toBeGreaterThan(3 * Math.max(green!, blue!));

  Object.assign(aSecond, { received: 12_000, dropped: 0 });
  await after(1_000, () => texts("fast")).toEqual(["12.0 k/s", expect.stringMatching(/^⚠ [\d.]+ dropped$/)]);
});

test("no edge passes over what stands at another", async ({ acquisition: _, site, page }) => {
  await page.goto(`${site.url}#/chain`);
  await page.locator("[data-test=rate]").first().waitFor();
  const order = await page.locator("svg.chain g[data-test]").evaluateAll((all) =>
    all.map((element) => element.getAttribute("data-test")),
  );
  expect(order.lastIndexOf("edge")).toBeLessThan(order.indexOf("edge-label"));
});

test("a block that is gone is said to be, until it is back", async ({ site, page }) => {
  const blocks = [{ type: "source", name: "source0" }, { type: "spectrum", name: "spectrum0", from: "source0" }];
  let shown = blocks;
  await fakeServer(page, (query, route) => chainAnswers(shown, () => 5)(query, route));
  await page.clock.install();
  await page.goto(`${site.url}#/chain`);
  await page.locator("[data-test=node][data-name=spectrum0]").click();
  const title = page.locator("[data-test=block-panel] h2");
  await expect.poll(() => title.innerText()).toBe("spectrum0");
  shown = blocks.slice(0, 1);
  await page.clock.fastForward(10_000); // the blocks are asked for so often
  const gone = page.locator("[data-test=block-gone]");
  await expect.poll(() => gone.allInnerTexts()).toEqual([expect.stringContaining("chain/spectrum0 any more")]);
  expect(await page.locator("[data-test=node]").count()).toBe(1);
  shown = blocks;
  await page.clock.fastForward(10_000);
  await expect.poll(() => title.allInnerTexts()).toEqual(["spectrum0"]);
  expect(await gone.count()).toBe(0);
});

test("the keyboard alone reaches a block, chooses it, and the address keeps it", async ({
  acquisition: _,
  site,
  page,
}) => {
  await page.goto(`${site.url}#/chain`);
  await page.locator("[data-test=node]").first().waitFor();
  expect(await attributes(page, "[data-test=node][tabindex='0']", "data-name")).toHaveLength(1);
  await page.locator("[data-test=block-chooser]").focus();
  const focused = (): Promise<string | null> =>
    page.evaluate(() => document.activeElement!.getAttribute("data-name"));
  await page.keyboard.press("Tab");
  expect(await focused()).toBe("source0");
  await page.keyboard.press("ArrowRight");
  await page.keyboard.press("ArrowRight");
  expect(await focused()).toBe("spectrum0");
  await page.keyboard.press("Tab"); // past all others
  expect(await focused()).toBeNull();
  await page.keyboard.press("Shift+Tab");
  expect(await focused()).toBe("spectrum0");
  await page.keyboard.press("Enter");
  const title = page.locator("[data-test=block-panel] h2");
  await expect.poll(() => title.innerText()).toBe("spectrum0");
  await page.reload();
  await expect.poll(() => title.innerText()).toBe("spectrum0");
});

test("the picture zooms, moves and fits by keys", async ({ acquisition: _, site, page }) => {
  await page.goto(`${site.url}#/chain`);
  const camera = (): Promise<string | null> => page.locator("svg.chain > g").getAttribute("transform");
  await page.locator("[data-test=node]").first().focus();
  const whole = await camera();
  await page.keyboard.press("+");
  await expect.poll(camera).not.toBe(whole);
  const zoomed = await camera();
  await page.keyboard.press("Shift+ArrowRight");
  await expect.poll(camera).not.toBe(zoomed);
  await page.keyboard.press("Home");
  await expect.poll(camera).toBe(whole);
});
