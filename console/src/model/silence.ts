import type { Flow } from "./flow";

/** Whether data come from a source, as far as this page has seen. */
export type Pulse = { state: "flowing" | "quiet" | "waiting" | "unknown"; text: string };

export const unknownPulse: Pulse = { state: "unknown", text: "not known" };

const shortestMs = 3_000;
const longestMs = 30_000;

/**
 * After how long without data a source is called silent: five times its longest usual pause. A board that counts a
 * few events a minute has long ones and isn't faulty; one that always gives data is silent after three seconds.
 * A pause that happened once isn't usual, but a fault, or somebody stopped the board: so it is the second-longest.
 */
export function patienceMs(pauses: readonly number[]): number {
  const [, usual = 0] = [...pauses].sort((a, b) => b - a);
  return Math.min(longestMs, Math.max(shortestMs, 5 * usual));
}

/** What is to be said of a source when its last account came. */
export function pulseOf(flow: Flow | undefined, at: number): Pulse {
  if (flow === undefined || flow.rate === null) {
    return { state: "waiting", text: "…" };
  }
  const silent = at - flow.lastData;
  if (silent < patienceMs(flow.pauses)) {
    return flow.hasMoved ? { state: "flowing", text: "data flow" } : { state: "waiting", text: "…" };
  }
  const seconds = Math.round(silent / 1000);
  const since = seconds < 120 ? `${seconds} s` : `${Math.floor(seconds / 60)} min`;
  return { state: "quiet", text: flow.hasMoved ? `no data for ${since}` : `no data, watched for ${since}` };
}
