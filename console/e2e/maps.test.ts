import { countSomething, shownNumber, sumOf } from "./support/reading";
import { expect, test } from "./support/test";

interface Rows {
  data: number[][];
}

const views = [
  { view: "position", path: "processing/0/filter_chain/board1/chain/position1", source: "heatmap" },
  { view: "image", path: "processing/0/filter_chain/board0/chain/image0", source: "cumulative" },
];

for (const { view, path, source } of views) {
  test(`the ${view} view holds what the server counted`, async ({ acquisition: _, site, page, client }) => {
    await page.goto(`${site.url}#/${view}`);
    const total = page.locator("[data-test=total]");
    await countSomething(page, total);
    const { data } = await client.sink<Rows>(path, { cmd: "get_data", source });
    await expect.poll(() => shownNumber(total)).toBe(sumOf(data.map(sumOf)));
    expect(await page.locator("[data-test=size]").innerText()).toBe(`${data.length} × ${data[0]!.length}`);
    const most = Math.max(...data.flat());
    const shown = (await page.locator("[data-test=most]").innerText()).replace(/\u202f/g, "");
    const [count, row, column] = (shown.match(/\d+/g) ?? []).map(Number);
    expect(count).toBe(most);
    expect(data[row!]?.[column!]).toBe(most);
  });
}
