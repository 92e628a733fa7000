import type { Page } from "playwright-core";
import { chainAnswers, fakeServer } from "./fakeServer";
import { numberIn } from "./reading";

// What the tests of maps do and read.

/** Counts of a small map. */
export const map = [
  [0, 5, 0, 1],
  [7, 0, 100, 0],
  [0, 20, 0, 3],
];

interface Command {
  cmd: string;
  source?: string;
}

/** A server with one map or image. `answer` gives the data of a source, `onState` hears each question for more. */
export async function serveMap(
  page: Page,
  type: string,
  answer: (source: string) => object,
  onState: () => void = () => undefined,
): Promise<void> {
  const chain = chainAnswers([{ type, name: "map0", shape: { rows: 3, columns: 4 } }], () => 0);
  await fakeServer(page, (query, route) => {
    const [command] = (query as { args?: Command[] }).args ?? [];
    if (route !== "query_by_json" || command === undefined) {
      return chain(query, route);
    }
    if (command.cmd === "get_data") {
      return Promise.resolve(answer(command.source!)).then((data) => JSON.stringify({ data }));
    }
    onState();
    return '[{"status":"idle"}]';
  });
}

export const mapTotal = (page: Page) => page.locator("[data-test=total]");
export const mapReadout = (page: Page): Promise<string> => page.locator("main [data-test=readout]").innerText();

/** The numbers of a line like "row 3, column 4, counts: 1 234". */
export function mapNumbers(text: string): Record<string, number> {
  const pairs = text.matchAll(/(row|column|counts|points):? ([\d\u202f]+)/g);
  return Object.fromEntries([...pairs].map(([, name, digits]) => [name!, numberIn(digits!)]));
}

// Of the picture, in pixels: what is left and above of the map, right and below it.
const [left, above, right, below] = [58, 82, 156, 40];

/** Where the middles of the columns, and of the rows from the top, are in the pixels of a picture of all cells. */
export async function cellMiddles(page: Page, counts: number[][]): Promise<{ x: number[]; y: number[] }> {
  const { width, height } = (await page.locator("[data-test=map] canvas").boundingBox())!;
  const middles = (count: number, from: number, size: number): number[] =>
    Array.from({ length: count }, (_, i) => Math.round(from + ((i + 0.5) * size) / count));
  return {
    x: middles(counts[0]!.length, left, width - left - right),
    y: middles(counts.length, above, height - above - below),
  };
}
