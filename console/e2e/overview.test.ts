import { chainAnswers, fakeServer } from "./support/fakeServer";
import { numberIn, shownNumber, sumOf } from "./support/reading";
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

test("a reset of the live spectrum is one of the server's counts, when it is confirmed", async ({
  acquisition: _,
  site,
  page,
  client,
}) => {
  const path = "processing/0/filter_chain/board0/chain/spectrum0";
  const counts = async (): Promise<number> => {
    const channels = Array.from({ length: 200 }, (_, channel) => channel);
    const all = await client.sink<{ data: number[] }[]>(path, { cmd: "get_data", channels });
    return sumOf(all.map(({ data }) => sumOf(data)));
  };
  await page.goto(site.url);
  const live = page.locator("section.live");
  const press = (name: string): Promise<void> => live.getByRole("button", { name, exact: true }).click();
  await press("Start");
  await expect.poll(counts).toBeGreaterThan(0);
  await press("Stop");
  await expect.poll(() => live.locator("[data-test=counting]").innerText()).toBe("stopped");
  await press("Reset");
  await page.locator("dialog[open]").getByRole("button", { name: "Cancel" }).click();
  expect(await counts()).toBeGreaterThan(0);
  await press("Reset");
  await page.locator("[data-test=confirm-action]").click();
  await expect.poll(counts).toBe(0);
  const counted = (await client.ledger()).find(({ name }) => name === "spectrum0")!.became["counted"];
  expect(counted).toBeGreaterThan(0); // the account is that of all records, which a reset doesn't change
});

test("the overview tells which boards' high voltage is on, and how high it is", async ({ site, page }) => {
  const boards = chainAnswers([{ type: "hv", name: "LEFT" }, { type: "hv", name: "RIGHT" }], () => 0);
  const values = { LEFT: '"HVState":[on,on],"VMon":[800.5,801.25]', RIGHT: '"HVState":[off,off],"VMon":[0,0]' };
  await fakeServer(page, (query, route) => {
    const name = query.path?.endsWith("LEFT") === true ? "LEFT" : "RIGHT";
    return route === "query_by_json" ? `{"response":"ok",${values[name]}}` : boards(query, route);
  });
  await page.goto(site.url);
  const voltage = page.locator("[data-test^=voltage-]");
  const words = async (): Promise<string[]> =>
    (await voltage.allInnerTexts()).map((text) => text.replace(/^.*\//, ""));
  await expect.poll(words).toEqual(["LEFT: ● on", "RIGHT: ○ off"]);
  expect(await voltage.first().getAttribute("title")).toContain("VMon 800.5 to 801.25");
  values.RIGHT = '"HVState":[off,on],"VMon":[0,12]';
  await expect.poll(words).toEqual(["LEFT: ● on", "RIGHT: ◐ on in part"]);
  expect(await voltage.nth(1).getAttribute("class")).toBe("warn");
});
