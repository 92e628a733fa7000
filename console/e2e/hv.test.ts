import type { Page } from "playwright-core";
import { chainAnswers, fakeServer } from "./support/fakeServer";
import type { Client } from "./support/question";
import { expect, test } from "./support/test";

const lists = (answer: string): Map<string, string[]> => {
  const found = [...answer.matchAll(/"(\w+)":\[([^\][]*)\]/g)];
  return new Map(found.map(([, name = "", values = ""]) => [name, values.split(",")]));
};

const ask = (client: Client, param: string): Promise<string> =>
  client.ask("hv1", { args: [{ cmd: "get_all_ch_values", param }] });
const states = async (client: Client): Promise<string[]> => lists(await ask(client, "all")).get("HVState") ?? [];

/** What the page's table of channels shows: head and cells of each column but that of the channels. */
async function columns(page: Page): Promise<{ name: string; access: string; values: string[] }[]> {
  return page.locator("[data-test=hv-channels]").evaluate((table) => {
    const cells = (row: Element): (string | null)[] => [...row.children].map((cell) => cell.textContent);
    const rows = [...table.querySelectorAll("tbody tr")].map(cells);
    return [...table.querySelectorAll("thead th")].slice(1).map((head, i) => ({
      name: head.firstChild?.textContent ?? "",
      access: head.querySelector("small")?.textContent ?? "",
      values: rows.map((row) => row[i + 1] ?? ""),
    }));
  });
}

test("the high voltage shows the values of each channel as the board gives them", async ({
  acquisition: _,
  site,
  page,
  client,
}) => {
  await page.goto(`${site.url}#/hv`);
  await page.locator("[data-test=hv-channels] tbody tr").first().waitFor();
  // Off, and nothing ramps: all stand still but what is measured.
  const answered = lists(await ask(client, "all"));
  expect(answered.size).toBeGreaterThan(2);
  expect([...answered.values()].every((values) => values.length === 4)).toBe(true);
  expect((await columns(page)).map(({ name }) => name)).toEqual([...answered.keys()]);
  for (const name of ["HVSet", "HVRamp", "HVState"]) {
    const column = async () => (await columns(page)).find((one) => one.name === name)?.values;
    await expect.poll(column).toEqual(answered.get(name));
  }
});

test("what can't be written is marked as read-only, and nothing else", async ({
  acquisition: _,
  site,
  page,
  client,
}) => {
  await page.goto(`${site.url}#/hv`);
  await page.locator("[data-test=hv-channels] tbody tr").first().waitFor();
  const text = await ask(client, "read_only");
  const readOnly = [...text.matchAll(/"(\w+)":/g)].map(([, name]) => name).filter((name) => name !== "data");
  const all = [...(await ask(client, "all")).matchAll(/"(\w+)":/g)].map(([, name]) => name);
  expect(readOnly.length).toBeGreaterThan(1);
  expect(all.length - 1).toBeGreaterThan(readOnly.length);
  const marked = async (mark: string): Promise<string[]> => {
    const single = await page.locator("[data-test=hv-board-wide] tr").evaluateAll((rows) =>
      rows.map((row) => [row.querySelector("th")?.textContent, row.lastElementChild?.textContent] as const),
    );
    const of = [...(await columns(page)).map(({ name, access }) => [name, access] as const), ...single];
    return of.filter(([, access]) => access === mark).map(([name]) => name ?? "").sort();
  };
  await expect.poll(() => marked("read-only")).toEqual([...readOnly].sort());
  const writable = all.filter((name) => name !== "response" && !readOnly.includes(name));
  expect(await marked("writable")).toEqual(writable.sort());
});

for (const [what, on, off, done] of [
  ["a board", "hv-on-BOARD1", "hv-off-BOARD1", "Switch the high voltage of BOARD1"],
  ["all boards", "hv-all-on", "hv-all-off", "Switch the high voltage of BOARD1"],
] as const) {
  test(`the high voltage of ${what} goes on and off when that is confirmed, and by nothing else`, async ({
    acquisition: _,
    site,
    page,
    client,
  }) => {
    await page.goto(`${site.url}#/hv`);
    const dialog = page.locator("dialog[open]");
    const open = async (button: string, word: string): Promise<void> => {
      await page.locator(`[data-test=${button}]`).click();
      await expect.poll(() => dialog.innerText()).toContain(`${done} ${word}?`);
    };
    const word = async (): Promise<string> => page.locator("[data-test=hv-board-BOARD1] .power").innerText();
    await expect.poll(word).toBe("○ off");
    await open(on, "on");
    expect(await page.evaluate(() => document.activeElement?.textContent?.trim())).toBe("Cancel");
    await page.keyboard.press("Enter");
    await expect.poll(() => dialog.count()).toBe(0);
    expect(new Set(await states(client))).toEqual(new Set(["off"]));
    await open(on, "on");
    await dialog.locator("[data-test=confirm-action]").click();
    await expect.poll(() => states(client)).toEqual(["on", "on", "on", "on"]);
    await expect.poll(word).toBe("● on");
    await open(off, "off");
    await page.keyboard.press("Escape");
    await expect.poll(() => dialog.count()).toBe(0);
    expect(new Set(await states(client))).toEqual(new Set(["on"]));
    await open(off, "off");
    await dialog.locator("[data-test=confirm-action]").click();
    await expect.poll(() => states(client)).toEqual(["off", "off", "off", "off"]);
    await expect.poll(word).toBe("○ off");
  });
}

test("nothing is marked as writable when it can't be read what is", async ({ site, page }) => {
  const others = chainAnswers([], () => 0);
  await fakeServer(page, (query, route) => {
    if (query.cmd === "get_blocks") {
      const board = { type: "hv", name: "hv1", path: "Hardware/LEFT", links: [], outputs: 0 };
      return JSON.stringify({ blocks: [board] });
    }
    if (route !== "query_by_json") {
      return others(query, route);
    }
    const isAll = JSON.stringify(query).includes('"all"');
    return isAll ? '{"response":"ok","HVState":[off,off],"HVSet":[800,800]}' : "nonsense";
  });
  await page.goto(`${site.url}#/hv`);
  const panel = page.locator("[data-test=hv-values]");
  await expect.poll(() => panel.locator(".warn").allInnerTexts()).toEqual([
    expect.stringContaining("Which values are read-only isn't known. What Hardware/LEFT answers"),
  ]);
  const marks = (await columns(page)).map(({ name, access }) => [name, access]);
  expect(marks).toEqual([["HVState", ""], ["HVSet", ""]]);
});

test("all boards are named before they are switched, and one order reaches all", async ({ site, page }) => {
  const boards = chainAnswers([], () => 0);
  const block = (name: string): object => ({ type: "hv", name, path: `Hardware/${name}`, links: [], outputs: 0 });
  const ordered: string[] = [];
  await fakeServer(page, (query, route) => {
    if (query.cmd === "get_blocks") {
      return JSON.stringify({ blocks: [block("LEFT"), block("RIGHT")] });
    }
    if (/^hv_o/.test(query.cmd ?? "")) {
      ordered.push(`${route} ${query.cmd}`);
      return '[{"response": true}]';
    }
    const values = query.path === "Hardware/LEFT" ? "on,off" : "on,";
    return route === "query_by_json" ? `{"response":"ok","HVState":[${values}]}` : boards(query, route);
  });
  await page.goto(`${site.url}#/hv`);
  const power = (name: string): Promise<string> => page.locator(`[data-test=hv-board-${name}] .power`).innerText();
  await expect.poll(() => power("LEFT")).toBe("◐ on in part");
  await expect.poll(() => power("RIGHT")).toBe("? unknown");
  for (const word of ["on", "off"]) {
    await page.locator(`[data-test=hv-all-${word}]`).click();
    const text = await page.locator("dialog[open]").innerText();
    expect(text).toContain(`Switch the high voltage of all 2 boards ${word}?`);
    expect(text).toContain("LEFT, RIGHT");
    await page.locator("[data-test=confirm-action]").click();
    await expect.poll(() => page.locator("[data-test=hv-done]").allInnerTexts()).toEqual([
      expect.stringContaining(`“${word}” was sent to LEFT, RIGHT`),
    ]);
  }
  expect(ordered).toEqual(["commands hv_on", "commands hv_off"]);
});
