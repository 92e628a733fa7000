import { signal } from "@preact/signals";
import { load, save } from "../base/storage";
import { idOn, isBroken } from "../model/brokenRun";
import type { Reading } from "../server/poll";
import type { RunInfo } from "../server/runControl";

export interface Broken {
  id: string;
  /** When it was seen, as Date.now() tells. */
  at: number;
}

const key = "broken-run";
const onKey = "run-on";

/** A run that ended with its server, until somebody has read of it; it outlives a reload. */
export const broken = signal<Broken | null>(parse(load(key)));

// The run that was on when this was last known: a reload while the server is away must not forget it.
let on = load(onKey);

/** Looks for one in each good answer. */
export function noteBroken({ value, fault, at }: Reading<RunInfo[]>): void {
  if (value === null || fault !== null) {
    return;
  }
  if (on !== null && isBroken(on, value)) {
    broken.value = { id: on, at };
    save(key, JSON.stringify(broken.value));
  }
  if (on !== idOn(value)) {
    on = idOn(value);
    save(onKey, on);
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
