import { effect } from "@preact/signals";
import { short } from "../base/format";
import { leading } from "../model/runState";
import { pulseOf } from "../model/silence";
import { titleOf } from "../model/title";
import { isKnown } from "./reach";
import { account, runs } from "./state";
import { sourceRate } from "./StatusLine";

/** Keeps the window's title; returns what ends it. */
export function startTitle(): () => void {
  return effect(() => {
    document.title = titleOf(leading(isKnown(runs.value) ? (runs.value.value ?? []) : []), flowText());
  });
}

function flowText(): string | null {
  const { value, fault, heardAt } = account.value;
  if (value === null) {
    return fault === null ? "…" : null;
  }
  const isQuiet = ({ type }: { type: string }, i: number): boolean =>
    type !== "source" || pulseOf(value.flows[i], heardAt).state === "quiet";
  const text = value.ledger.entries.every(isQuiet) ? "no data" : `${short(sourceRate(value))}/s`;
  return isKnown(account.value) ? text : null;
}
