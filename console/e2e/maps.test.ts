import { readFileSync } from "node:fs";
import type { Page } from "playwright-core";
import { cellMiddles, map, mapNumbers, mapReadout, mapTotal as total, serveMap } from "./support/maps";
import { countSomething, shownNumber, sumOf } from "./support/reading";
import { expect, test } from "./support/test";

interface Rows {
  data: number[][];
}

const positionPath = "processing/0/filter_chain/board1/chain/position1";
const imagePath = "processing/0/filter_chain/board0/chain/image0";
const views = [
  { view: "position", path: positionPath, source: "heatmap" },
  { view: "image", path: imagePath, source: "cumulative" },
];

/** What a file that a button saves holds. */
async function saved(page: Page, button: string): Promise<Buffer> {
  const [download] = await Promise.all([
    page.waitForEvent("download"),
    page.locator(`[data-test=${button}]`).click(),
  ]);
  return readFileSync(await download.path());
}

for (const { view, path, source } of views) {
  test(`the ${view} view holds what the server counted`, async ({ acquisition: _, site, page, client }) => {
    await page.goto(`${site.url}#/${view}`);
    await countSomething(page, total(page));
    const { data } = await client.sink<Rows>(path, { cmd: "get_data", source });
    await expect.poll(() => shownNumber(total(page))).toBe(sumOf(data.map(sumOf)));
    expect(await page.locator("[data-test=size]").innerText()).toBe(`${data.length} × ${data[0]!.length}`);
    const most = Math.max(...data.flat());
    const shown = (await page.locator("[data-test=most]").innerText()).replace(/\u202f/g, "");
    const [count, row, column] = (shown.match(/\d+/g) ?? []).map(Number);
    expect(count).toBe(most);
    expect(data[row!]?.[column!]).toBe(most);
  });

  test(`the cursor in the ${view} view reads its cell`, async ({ acquisition: _, site, page, client }) => {
    await page.goto(`${site.url}#/${view}`);
    await countSomething(page, total(page));
    const { data } = await client.sink<Rows>(path, { cmd: "get_data", source });
    await expect.poll(() => shownNumber(total(page))).toBe(sumOf(data.map(sumOf)));
    await page.locator("[data-test=map]").focus();
    const read = new Map<string, number>();
    for (const key of ["ArrowRight", "ArrowRight", "ArrowUp", "ArrowUp", "ArrowLeft", "ArrowDown"]) {
      const before = await mapReadout(page);
      await page.keyboard.press(key);
      await expect.poll(() => mapReadout(page)).not.toBe(before);
      const { row, column, counts } = mapNumbers(await mapReadout(page));
      expect(counts).toBe(data[row!]![column!]);
      read.set(`${row} ${column}`, counts!);
    }
    expect(read.size).toBeGreaterThan(4);
  });

  test(`the ${view} view's file holds every cell`, async ({ acquisition: _, site, page, client }) => {
    await page.goto(`${site.url}#/${view}`);
    await countSomething(page, total(page));
    const { data } = await client.sink<Rows>(path, { cmd: "get_data", source });
    await expect.poll(() => shownNumber(total(page))).toBe(sumOf(data.map(sumOf)));
    const [head, ...lines] = (await saved(page, "csv")).toString().trimEnd().split("\n");
    expect(head).toBe(["row", ...data[0]!.keys()].join(","));
    expect(lines.map((line) => line.split(",").map(Number))).toEqual(data.map((row, i) => [i, ...row]));
    const picture = await saved(page, "png");
    expect(picture.subarray(1, 4).toString()).toBe("PNG");
  });
}

const sums = { size: 64, top: 10, fromRight: 84 + 64 };

/** How long the bars of the sums are: of the columns, and of the rows from the top. */
async function barsDrawn(page: Page): Promise<[number[], number[]]> {
  const canvas = page.locator("[data-test=map] canvas");
  const { width } = (await canvas.boundingBox())!;
  const middles = await cellMiddles(page, map);
  const columns = middles.x.map((x) => [x, sums.top, 1, sums.size]);
  const rows = middles.y.map((y) => [width - sums.fromRight, y, sums.size, 1]);
  const lengths = await canvas.evaluate(
    (element, areas) =>
      areas.map(([x, y, width, height]) => {
        const ctx = (element as HTMLCanvasElement).getContext("2d")!;
        const { data } = ctx.getImageData(Math.round(x!), y!, width!, height!);
        // The colour of sums in the light theme.
        const isSum = (_: number, i: number): boolean =>
          i % 4 === 0 && data[i] === 0 && data[i + 1] === 0x72 && data[i + 2] === 0xb2;
        return Array.from(data).filter(isSum).length;
      }),
    [...columns, ...rows],
  );
  return [lengths.slice(0, columns.length), lengths.slice(columns.length)];
}

test("the sums beside a map are those of its columns and rows", async ({ site, page }) => {
  await page.emulateMedia({ colorScheme: "light" });
  await serveMap(page, "position", () => map);
  await page.goto(`${site.url}#/position?rows=down`);
  await expect.poll(() => shownNumber(total(page))).toBe(136);
  const expected = [[7, 25, 100, 4], [6, 107, 23]] as const;
  await expect.poll(async () => Math.max(...(await barsDrawn(page))[0])).toBeGreaterThan(60);
  const drawn = await barsDrawn(page);
  for (const [i, all] of expected.entries()) {
    const lengths = all.map((sum) => (sums.size * sum) / Math.max(...all));
    lengths.forEach((length, k) => expect(Math.abs(drawn[i]![k]! - length)).toBeLessThan(1.5));
  }
});

/** The numbers of the file that is saved, without what stands above and beside them. */
async function cellsSaved(page: Page): Promise<number[][]> {
  const [, ...lines] = (await saved(page, "csv")).toString().trimEnd().split("\n");
  return lines.map((line) => line.split(",").slice(1).map(Number));
}

test("what an immediate image shows one after the other adds up to the cumulative one", async ({ site, page }) => {
  const parts = [map, map.map((row) => row.map((count) => 2 * count + 1))];
  const sum = map.map((row) => row.map((count) => 3 * count + 1));
  const asked: ((part: number[][]) => void)[] = [];
  let isOver = false;
  await serveMap(page, "image", (source) =>
    source === "cumulative" ? sum : isOver ? map : new Promise<number[][]>((answer) => void asked.push(answer)),
  );
  await page.goto(`${site.url}#/image?show=immediate`);
  let answered = 0;
  for (const part of parts) {
    await expect.poll(() => asked.length).toBeGreaterThan(answered);
    answered = asked.length;
    asked.at(-1)!(part); // a question that waited too long was asked again
    await expect.poll(() => shownNumber(total(page))).toBe(sumOf(part.flat()));
    expect(await cellsSaved(page)).toEqual(part);
  }
  isOver = true;
  asked.at(-1)!(map); // the next question, if it is there already, must not wait: others would wait behind it
  await page.locator("[data-test=choose-cumulative]").click();
  await expect.poll(() => shownNumber(total(page))).toBe(sumOf(sum.flat()));
  expect(await cellsSaved(page)).toEqual(sum);
});

test("a scatter shows every point that was answered, each once", async ({ site, page }) => {
  const points = [
    [[0, 0.1], [1, 0.5], [1, 0.5]],
    [[3, 1], [2, 0], [0, 0.7]],
  ];
  const cloud = (some: number[][]): object => [{ x: some.map(([x]) => x) }, { y: some.map(([, y]) => y) }];
  let asked = 0;
  await serveMap(page, "position", () => cloud(points[asked++] ?? []));
  await page.goto(`${site.url}#/position?show=scatter`);
  await expect.poll(() => shownNumber(total(page))).toBe(6);
  await expect.poll(() => asked).toBeGreaterThan(3);
  expect(await shownNumber(total(page))).toBe(6);
  const lines = (await saved(page, "csv")).toString().trimEnd().split("\n");
  expect(lines).toEqual(["column,share", ...points.flat().map((point) => point.join(","))]);
  await page.locator("[data-test=clear]").click();
  await expect.poll(() => shownNumber(total(page))).toBe(0);
});

test("the keys of a view are heard with Caps Lock, too", async ({ site, page }) => {
  await serveMap(page, "position", () => map);
  await page.goto(`${site.url}#/position`);
  await expect.poll(() => shownNumber(total(page))).toBe(136);
  await page.keyboard.press("L");
  await expect.poll(() => page.url()).toContain("z=lin");
  await page.keyboard.press("F");
  await page.locator("[data-test=frozen]").waitFor();
});

/** A scatter on the page, with three points, whose next answers are given by hand. */
async function openScatter(page: Page, url: string) {
  const asked: ((cloud: object) => void)[] = [];
  let states = 0;
  await serveMap(page, "position", () => new Promise((answer) => void asked.push(answer)), () => ++states);
  await page.goto(`${url}#/position?show=scatter`);
  const give = async (count: number): Promise<void> => {
    await expect.poll(() => asked.length).toBeGreaterThan(0);
    asked.shift()!([{ x: Array(count).fill(1) }, { y: Array(count).fill(0.5) }]);
  };
  await give(3);
  await expect.poll(() => shownNumber(total(page))).toBe(3);
  await expect.poll(() => asked.length).toBe(1);
  // The block's state is asked for on the same connection, behind what was answered.
  const heard = async (): Promise<void> => {
    const before = states;
    await expect.poll(() => states).toBeGreaterThan(before + 1);
  };
  return { asked, give, heard };
}

test("points that were cleared don't come back with an answer that was under way", async ({ site, page }) => {
  const { give } = await openScatter(page, site.url);
  await page.locator("[data-test=clear]").click();
  await expect.poll(() => shownNumber(total(page))).toBe(0);
  await give(2);
  await expect.poll(() => shownNumber(total(page))).not.toBe(0);
  expect(await shownNumber(total(page))).toBe(2);
});

test("a frozen scatter stays when an answer comes late, and shows it afterwards", async ({ site, page }) => {
  const { asked, give, heard } = await openScatter(page, site.url);
  await page.locator("[data-test=freeze]").click();
  await page.locator("[data-test=frozen]").waitFor();
  await give(2);
  await heard();
  await page.keyboard.press("l");
  await expect.poll(() => page.url()).toContain("z=lin");
  expect(await shownNumber(total(page))).toBe(3);
  await page.locator("[data-test=freeze]").click();
  await expect.poll(() => asked.length).toBe(1);
  await give(4);
  await expect.poll(() => shownNumber(total(page))).toBe(9);
});

test("a scatter's count is that of the points in its file", async ({ acquisition: _, site, page }) => {
  await page.goto(`${site.url}#/position?show=scatter`);
  await countSomething(page, total(page));
  await page.locator("[data-test=freeze]").click();
  await page.locator("[data-test=frozen]").waitFor();
  const [, ...lines] = (await saved(page, "csv")).toString().trimEnd().split("\n");
  expect(await shownNumber(total(page))).toBe(lines.length);
  for (const [column, share] of lines.map((line) => line.split(",").map(Number))) {
    expect(Number.isInteger(column) && column! >= 0 && column! < 16).toBe(true);
    expect(share! >= 0 && share! <= 1).toBe(true);
  }
});
