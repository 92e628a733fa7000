import { chainAnswers, fakeServer } from "./support/fakeServer";
import { expect, test } from "./support/test";

const samples = [0, 1, 2, 3];
const counts = { timestamp: 1, rates_in: [1, 1], rates_out: [1, 1], counts_in: [1, 1], counts_out: [1, 1] };

/** What a block of each view answers, and what is there when it shows it. */
const views = [
  { view: "position", type: "position", shape: { rows: 2, columns: 2 }, shown: "[data-test=map]" },
  { view: "image", type: "image", shape: { rows: 2, columns: 2 }, shown: "[data-test=map]" },
  {
    view: "scope",
    type: "oscilloscope",
    shape: { channels: 1, analog: 1, digital: 0, samples: 4 },
    shown: "[data-test=trace-0]",
  },
  { view: "rates", type: "rate_counters_sink", shape: { channels: ["A", "T0"] }, shown: "[data-test=rate-0]" },
];

function answerOf(query: object): string {
  const [{ cmd, source } = { cmd: (query as { cmd?: string }).cmd, source: "" }] =
    (query as { args?: { cmd: string; source?: string }[] }).args ?? [];
  switch (cmd) {
    case "require_data":
      return JSON.stringify([{ data: samples }]);
    case "get_channel_map":
      return JSON.stringify({ channel_map: ["A", "T0"] });
    case "data_get_status":
      return '[{"status":"idle"}]';
    case "get_data":
      return JSON.stringify(
        source === "immediate" ? counts : source === "data" ? { data: [counts] } : { data: [[1, 2], [3, 4]] },
      );
    default:
      return '[{"response":true}]';
  }
}

for (const { view, type, shape, shown } of views) {
  test(`the ${view} view says that its block is gone, shows another, and comes back`, async ({ site, page }) => {
    const [one, other] = ["one", "other"].map((name) => ({ type, name, shape }));
    let known = [one!, other!];
    await fakeServer(page, (query, route) => {
      const answer = chainAnswers(known, () => 0)(query, route);
      return answer === "" ? answerOf(query) : answer;
    });
    const path = (name: string): string => `processing/0/filter_chain/fake/chain/${name}`;
    const gone = page.locator("[data-test=block-gone]");
    const chosen = page.locator("main [data-test=block]");

    const change = async (blocks: typeof known): Promise<void> => {
      known = blocks;
      await page.clock.fastForward(10_000); // the blocks are asked for so often
    };
    const says = (name: string) =>
      expect.poll(() => gone.allInnerTexts()).toEqual([`The server has no ${path(name)}. Shown is another.`]);

    await page.clock.install();
    await page.goto(`${site.url}#/${view}?block=${encodeURIComponent(path("lost"))}`);
    await says("lost");
    await page.locator(shown).first().waitFor();
    expect(await chosen.inputValue()).toBe(path("one"));

    await chosen.selectOption(path("other"));
    await expect.poll(() => gone.count()).toBe(0);
    expect(await chosen.inputValue()).toBe(path("other"));

    await change([one!]);
    await says("other");
    await page.locator(shown).first().waitFor();
    expect(await chosen.inputValue()).toBe(path("one"));

    await change([one!, other!]);
    await expect.poll(() => gone.count()).toBe(0);
    expect(await chosen.inputValue()).toBe(path("other"));

    await change([]);
    await expect
      .poll(() => page.locator("[data-test=no-block]").allInnerTexts())
      .toEqual([expect.stringContaining(`The configuration has no block of type "${type}".`)]);
  });
}
