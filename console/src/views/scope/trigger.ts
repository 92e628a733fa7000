import type { Trace } from "../../server/scope";
import { keyOf } from "./traces";

/** What a waveform must do to be held. */
export interface Trigger {
  /** Of the trace. */
  key: string;
  level: number;
  isRising: boolean;
}

/** The first sample on the other side of the level; -1 when there is none. */
export function crossingOf(samples: Float64Array, level: number, isRising: boolean): number {
  for (let i = 1; i < samples.length; ++i) {
    const [before, after] = [samples[i - 1]!, samples[i]!];
    if (isRising ? before < level && after >= level : before > level && after <= level) {
      return i;
    }
  }
  return -1;
}

/** Where the traces do what the trigger asks; -1 when they don't, or have no such trace. */
export function crossingIn(traces: readonly Trace[], trigger: Trigger): number {
  const trace = traces.find((candidate) => keyOf(candidate) === trigger.key);
  return trace === undefined ? -1 : crossingOf(trace.samples, trigger.level, trigger.isRising);
}

/** From the address: "0,1200,rising"; else at level 0 of this trace. */
export function parseTrigger(text: string | null, key: string): Trigger {
  const match = /^(\d{1,6}(?:[.d]\d{1,3})?),([^,]+),(rising|falling)$/.exec(text ?? "");
  const level = Number(match?.[2]);
  if (match === null || !Number.isFinite(level)) {
    return { key, level: 0, isRising: true };
  }
  return { key: match[1]!, level, isRising: match[3] === "rising" };
}

export function formatTrigger({ key, level, isRising }: Trigger): string {
  return `${key},${level},${isRising ? "rising" : "falling"}`;
}
