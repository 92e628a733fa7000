import { readFileSync } from "node:fs";
import type { Page } from "playwright-core";
import { type Answers, chainAnswers, fakeServer } from "./fakeServer";
import type { Client } from "./question";
import { numberIn } from "./reading";
import { expect } from "./test";

// What the tests of spectra do and read.

/**
 * A spectrum block "made" whose channels hold these counts, until it is gone, in the server's place. Returns what is
 * asked for.
 */
export async function serveCounts(
  page: Page,
  countsOf: (channel: number) => readonly number[],
  isGone = (): boolean => false,
): Promise<number[][]> {
  const questions: number[][] = [];
  const shape = { channels: 4, bins: countsOf(0).length, gain: 1 };
  const source = { type: "source", name: "source0" };
  const rest = chainAnswers([source], () => 1_000);
  const chain = chainAnswers([source, { type: "spectrum", name: "made", from: "source0", shape }], () => 1_000);
  const answers: Answers = (query, route) => {
    const [asked] = (query as { args?: { cmd: string; channels?: number[] }[] }).args ?? [];
    switch (asked?.cmd) {
      case "get_data":
        questions.push(asked.channels ?? []);
        return JSON.stringify((asked.channels ?? []).map((channel) => ({ data: countsOf(channel) })));
      case "data_get_status":
        return '[{"status":"idle"}]';
      default:
        return asked === undefined ? (isGone() ? rest : chain)(query, route) : '[{"response":true}]';
    }
  };
  await fakeServer(page, answers);
  return questions;
}

/** Counts of Gauss peaks of this height on a level. */
export function peaksAt(bins: number, ...peaks: (readonly [centre: number, height: number])[]): number[] {
  const heightAt = (bin: number): number =>
    peaks.reduce((sum, [centre, height]) => sum + height * Math.exp(-(((bin - centre) / 8) ** 2) / 2), 20);
  return Array.from({ length: bins }, (_, bin) => Math.round(heightAt(bin)));
}

export async function openSpectra(page: Page, url: string, show: string, more = ""): Promise<void> {
  await page.goto("about:blank");
  await page.goto(`${url}#/spectra?show=${encodeURIComponent(show)}${more}`);
  await page.locator("[data-test=total]").first().waitFor();
  await page.locator(".u-over").waitFor();
}

/** What is looked at, in bins; null when that is all. The address has it a moment after it changed. */
export function shownSpan(page: Page): [number, number] | null {
  const query = new URLSearchParams(new URL(page.url()).hash.split("?")[1] ?? "");
  const span = query.get("span");
  return span === null ? null : (span.split("to").map(Number) as [number, number]);
}

/** The span when it is another than before. */
export async function nextSpan(page: Page, before: [number, number] | null): Promise<[number, number] | null> {
  await expect.poll(() => shownSpan(page)).not.toEqual(before);
  return shownSpan(page);
}

/** The bins under the cursor and the counts of the first curve there. */
export async function cursorAt(page: Page): Promise<{ from: number; to: number; count: number }> {
  const text = await page.locator("[data-test=readout]").innerText();
  const [, from = "", to = from] = /bins? (\d+)(?:–(\d+))?/.exec(text) ?? [];
  const [, count = ""] = /ch \d+: (\d+)/.exec(text) ?? [];
  return { from: Number(from), to: Number(to), count: count === "" ? NaN : Number(count) };
}

/** Where in the page a share of the plot's width is, half way up. */
export async function plotPoint(page: Page, share: number): Promise<{ x: number; y: number }> {
  const plot = page.locator(".u-over");
  let box = await plot.boundingBox();
  // A chart is made anew when there is another curve in it.
  await expect.poll(async () => (box ??= await plot.boundingBox())).not.toBeNull();
  return { x: box!.x + share * box!.width, y: box!.y + box!.height / 2 };
}

type Button = "left" | "right";

export async function drag(page: Page, from: number, to: number, button: Button = "left"): Promise<void> {
  const [start, end] = [await plotPoint(page, from), await plotPoint(page, to)];
  await page.mouse.move(start.x, start.y);
  await page.mouse.down({ button });
  await page.mouse.move((start.x + end.x) / 2, start.y);
  await page.mouse.move(end.x, end.y);
  await page.mouse.up({ button });
}

export async function countsOf(client: Client, path: string, channel: number): Promise<number[]> {
  const [answer] = await client.sink<{ data: number[] }[]>(path, { cmd: "get_data", channels: [channel] });
  return answer!.data;
}

export const totals = async (page: Page): Promise<number[]> =>
  (await page.locator("[data-test=curves] [data-test=total]").allInnerTexts()).map(numberIn);

/** What the page has the browser save when this is pressed. */
export async function saved(page: Page, button: string): Promise<Buffer> {
  const [download] = await Promise.all([
    page.waitForEvent("download"),
    page.locator(`[data-test=${button}]`).click(),
  ]);
  return readFileSync(await download.path());
}
