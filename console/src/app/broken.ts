import { signal } from "@preact/signals";
import { load, save } from "../base/storage";
import { brokenRun } from "../model/brokenRun";
import type { Reading } from "../server/poll";
import type { RunInfo } from "../server/runControl";

export interface Broken {
  id: string;
  /** When it was seen, as Date.now() tells. */
  at: number;
}

const key = "broken-run";

/** A run that ended with its server, until somebody has read of it; it outlives a reload. */
export const broken = signal<Broken | null>(parse(load(key)));

/** Looks for one in two readings in a row. */
export function noteBroken(before: Reading<RunInfo[]>, after: Reading<RunInfo[]>): void {
  const id = brokenRun(before.value ?? [], after.value ?? []);
  if (id !== null) {
    broken.value = { id, at: after.at };
    save(key, JSON.stringify(broken.value));
  }
}

export function forgetBroken(): void {
  broken.value = null;
  save(key, null);
}

function parse(text: string | null): Broken | null {
  try {
    const { id, at } = JSON.parse(text ?? "{}") as Partial<Broken>;
    return typeof id === "string" && typeof at === "number" ? { id, at } : null;
  } catch {
    return null;
  }
}
