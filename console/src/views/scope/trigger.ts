import { roundStep } from "../../charts/roundStep";
import type { Trace } from "../../server/scope";
import { type FirstTraces, keyOf } from "./traces";

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

/** Half way up the middle one of the first pulses; level 0 while none is known. */
export function proposedTrigger(key: string, first: FirstTraces): Trigger {
  if (key.includes("d")) {
    return { key, level: 0.5, isRising: true };
  }
  const known = (first.get(key) ?? []).filter(({ samples }) => samples.length > 0).map(halfWay);
  const middle = known.sort((a, b) => a.level - b.level)[known.length >> 1];
  return { key, ...(middle ?? { level: 0, isRising: true }) };
}

/** Half way from where the trace mostly is to its peak, on the way there. */
function halfWay({ samples }: Trace): Omit<Trigger, "key"> {
  const sorted = samples.slice().sort();
  const [low, usual, high] = [sorted[0]!, sorted[sorted.length >> 1]!, sorted[sorted.length - 1]!];
  const isRising = high - usual >= usual - low;
  const step = roundStep((high - low) / 100);
  const level = Math.round((usual + (isRising ? high : low)) / 2 / step) * step;
  return { level: Number(level.toPrecision(9)), isRising };
}

/** From the address: "0,1200,rising"; null when it has none. */
export function parseTrigger(text: string | null): Trigger | null {
  const match = /^(\d{1,6}(?:[.d]\d{1,3})?),([^,]+),(rising|falling)$/.exec(text ?? "");
  const level = Number(match?.[2]);
  if (match === null || !Number.isFinite(level)) {
    return null;
  }
  return { key: match[1]!, level, isRising: match[3] === "rising" };
}

export function formatTrigger({ key, level, isRising }: Trigger): string {
  return `${key},${level},${isRising ? "rising" : "falling"}`;
}
