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
  const rate = page.locator("[data-test=edge][data-from=source0] [data-test=rate]");
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

test("the keyboard alone reaches a block, chooses it, and the address keeps it", async ({
  acquisition: _,
  site,
  page,
}) => {
  await page.goto(`${site.url}#/chain`);
  await page.locator("[data-test=node][data-name=source0]").focus();
  await page.keyboard.press("ArrowRight");
  await page.keyboard.press("ArrowRight");
  await page.keyboard.press("Enter");
  const title = page.locator("[data-test=block-panel] h2");
  await expect.poll(() => title.innerText()).toBe("spectrum0");
  await page.reload();
  await expect.poll(() => title.innerText()).toBe("spectrum0");
});

test("the picture zooms, moves and fits by keys", async ({ acquisition: _, site, page }) => {
  await page.goto(`${site.url}#/chain`);
  const picture = page.locator("svg.chain");
  const camera = (): Promise<string | null> => page.locator("svg.chain > g").getAttribute("transform");
  await picture.focus();
  const whole = await camera();
  await page.keyboard.press("+");
  await expect.poll(camera).not.toBe(whole);
  const zoomed = await camera();
  await page.keyboard.press("ArrowRight");
  await expect.poll(camera).not.toBe(zoomed);
  await page.keyboard.press("Home");
  await expect.poll(camera).toBe(whole);
});
