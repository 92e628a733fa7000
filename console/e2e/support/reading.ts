import type { Locator, Page } from "playwright-core";
import { expect } from "./test";

/** The whole number that a text shows; its digits are in groups. NaN when there is none. */
export function numberIn(text: string): number {
  const digits = text.replace(/[\u202f\s]/g, "").replace("−", "-");
  return /^-?\d+$/.test(digits) ? Number(digits) : NaN;
}

/** The number that a text like "2.45 k" shows. */
export function inUnits(text: string): number {
  const [, digits, prefix = ""] = /^([\d.]+)\s?([kMGTP]?)$/.exec(text.trim()) ?? [];
  return digits === undefined ? NaN : Number(digits) * 1000 ** ["", "k", "M", "G", "T", "P"].indexOf(prefix);
}

/** What an element shows as a whole number; NaN while it isn't there. */
export async function shownNumber(element: Locator): Promise<number> {
  return numberIn((await element.allInnerTexts())[0] ?? "");
}

export function sumOf(numbers: readonly number[]): number {
  return numbers.reduce((sum, number) => sum + number, 0);
}

/** Has what the view shows count until there is something, and stop: its numbers then stand still. */
export async function countSomething(page: Page, total: Locator): Promise<void> {
  const state = (): Promise<string> => page.locator("[data-test=counting]").innerText();
  await page.getByRole("button", { name: "Start", exact: true }).click();
  await expect.poll(state).toBe("counting"); // or "stopped", below, could be that of before
  await expect.poll(() => shownNumber(total)).toBeGreaterThan(100);
  await page.getByRole("button", { name: "Stop", exact: true }).click();
  await expect.poll(state).toBe("stopped");
}
