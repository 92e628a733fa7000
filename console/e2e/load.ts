import type { Browser, Page } from "playwright-core";
import { chainAnswers } from "./support/fakeServer";
import { startPreparedServer } from "./support/preparedServer";
import { expect, test } from "./support/test";

// What the open page costs. Measured by e2e/run --load on a machine that does nothing else; nothing is judged.

const secondsMeasured = 30;
const screen = { width: 1920, height: 1080 };

/** CPU seconds so far: of the page's process, and of all of the browser's. */
async function cpuSeconds(browser: Browser): Promise<{ page: number; all: number }> {
  const session = await browser.newBrowserCDPSession();
  const { processInfo } = await session.send("SystemInfo.getProcessInfo");
  await session.detach();
  const sum = (type: RegExp): number =>
    processInfo.filter((one) => type.test(one.type)).reduce((seconds, { cpuTime }) => seconds + cpuTime, 0);
  return { page: sum(/^renderer$/), all: sum(/./) };
}

/** Counts the data that blocks answer and how often they were drawn, in the page itself. */
function countAnswers(): void {
  const counted = { answers: 0, bytes: 0, drawn: 0 };
  Object.assign(window, { counted });
  const Socket = window.WebSocket;
  window.WebSocket = class extends Socket {
    constructor(url: string | URL) {
      super(url);
      if (String(url).includes("query_by_json")) {
        this.addEventListener("message", ({ data }: MessageEvent<string>) => {
          if (data.length > 1000) { // others tell of states
            ++counted.answers;
            counted.bytes += data.length;
          }
        });
      }
    }
  };
  const { clearRect, putImageData } = CanvasRenderingContext2D.prototype;
  Object.assign(CanvasRenderingContext2D.prototype, {
    clearRect(...area: unknown[]) {
      ++counted.drawn; // curves
      Reflect.apply(clearRect, this, area);
    },
    putImageData(...image: unknown[]) {
      ++counted.drawn; // maps
      Reflect.apply(putImageData, this, image);
    },
  });
}

type Counted = Record<"answers" | "bytes" | "drawn", number>;
const countedIn = (page: Page): Promise<Counted> =>
  page.evaluate(() => ({ ...(window as unknown as { counted: Counted }).counted }));

async function measure(name: string, browser: Browser, page: Page): Promise<void> {
  await expect.poll(async () => (await countedIn(page)).answers).toBeGreaterThan(10); // all is loaded and compiled
  const [before, cpu, began] = [await countedIn(page), await cpuSeconds(browser), performance.now()];
  await new Promise((done) => setTimeout(done, secondsMeasured * 1000));
  const [after, spent] = [await countedIn(page), await cpuSeconds(browser)];
  const seconds = (performance.now() - began) / 1000;
  const percent = (kind: keyof typeof cpu): string =>
    `${((100 * (spent[kind] - cpu[kind])) / seconds).toFixed(1)} %`;
  const rate = (kind: keyof Counted): string => ((after[kind] - before[kind]) / seconds).toFixed(2);
  const size = (after.bytes - before.bytes) / (after.answers - before.answers) / 1000;
  process.stdout.write(
    `${name}: ${rate("answers")} answers/s of ${size.toFixed(0)} kB, drawn ${rate("drawn")} times/s; ` +
      `the page takes ${percent("page")} of a core, all of the browser ${percent("all")}\n`,
  );
}

async function opened(browser: Browser, url: string): Promise<Page> {
  const page = await browser.newPage({ viewport: screen });
  await page.addInitScript(countAnswers);
  await page.goto(url);
  return page;
}

/** One board with 64 channels of 16384 bins. */
const manyBins = {
  Hardware: "sim:array?channels=64&rate=200000&source=Cs-137&seed=1&gain=16",
  parameters: [
    { param_name: "ch_number", param_value: 64 },
    { param_name: "bin_number", param_value: 16384 },
  ],
};

interface Whole {
  Hardware: { board_connection_string: string }[];
  processing: { filter_chain: { chain: { name: string; parameters: object[] }[] }[] }[];
}

test("four of 64 spectra of 16384 bins", async ({ browser, site, acquisition, client }) => {
  await acquisition.kill();
  await acquisition.start((configuration) => {
    const whole = configuration as unknown as Whole;
    whole.Hardware[0]!.board_connection_string = manyBins.Hardware;
    const blocks = whole.processing.flatMap(({ filter_chain }) => filter_chain.flatMap(({ chain }) => chain));
    blocks.find(({ name }) => name === "source0")!.parameters.length = 1;
    blocks.find(({ name }) => name === "spectrum0")!.parameters = manyBins.parameters;
  });
  const path = "processing/0/filter_chain/board0/chain/spectrum0";
  await client.sink(path, { cmd: "run_control", status: "freerun" });
  const page = await opened(browser, `${site.url}#/spectra?show=${encodeURIComponent("spectrum0@8-11")}`);
  await expect.poll(() => page.locator("[data-test=curves] [data-test=total]").count()).toBe(4);
  await measure("Spectra, 4 × 16384 bins of 64", browser, page);
  await page.locator("[data-test=mark-clearest]").click();
  await page.locator("[data-test=fit]").waitFor();
  await measure("the same with a region and its fit", browser, page);
  await page.goto(`${site.url}#/overview`);
  await measure("Overview", browser, page);
  await page.close();
});

const edge = 512;

/** A map in which each cell counts, and counts on from answer to answer. */
function filledMaps(): string[] {
  const cell = (row: number, column: number, round: number): number =>
    Math.round(2000 * Math.exp(-((row - 200) ** 2 + (column - 300) ** 2) / 20_000)) +
    ((row * 7 + column * 13) % 90) +
    round;
  const row = (r: number, round: number): number[] => Array.from({ length: edge }, (_, c) => cell(r, c, round));
  const rows = (round: number): number[][] => Array.from({ length: edge }, (_, r) => row(r, round));
  return [0, 1, 2, 3].map((round) => JSON.stringify({ data: rows(round) }));
}

test("a map of 512 × 512", async ({ browser, site, acquisition }) => {
  await acquisition.kill(); // its port is needed
  const maps = filledMaps();
  let asked = 0;
  const answers = chainAnswers(
    [
      { type: "source", name: "source0" },
      { type: "position", name: "map0", from: "source0", shape: { rows: edge, columns: edge } },
    ],
    () => asked,
  );
  const stop = await startPreparedServer((query) => {
    const text = JSON.stringify(query);
    return text.includes("get_data") ? maps[++asked % maps.length]! : String(answers(query, ""));
  });
  const page = await opened(browser, `${site.url}#/position?every=500`);
  await page.locator("[data-test=most]").waitFor();
  await measure("Position, 512 × 512, each cell filled", browser, page);
  await page.close();
  stop();
});
