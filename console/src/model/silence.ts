import type { Flow } from "./flow";

/** Whether data come from a source, as far as this page has seen. */
export type Pulse = { state: "flowing" | "quiet" | "waiting"; text: string };

/** A source that gave nothing for so long is called silent. */
const silentMs = 3_000;

/** What is to be said of a source at this time (ms, as Date.now()). */
export function pulseOf(flow: Flow | undefined, now: number): Pulse {
  if (flow === undefined || flow.rate === null) {
    return { state: "waiting", text: "…" };
  }
  const silent = now - flow.lastData;
  if (silent < silentMs) {
    return flow.hasMoved ? { state: "flowing", text: "data flow" } : { state: "waiting", text: "…" };
  }
  const seconds = Math.round(silent / 1000);
  const since = seconds < 120 ? `${seconds} s` : `${Math.floor(seconds / 60)} min`;
  return { state: "quiet", text: flow.hasMoved ? `no data for ${since}` : `no data, watched for ${since}` };
}
