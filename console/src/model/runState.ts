import type { RunInfo, RunStatus } from "../server/runControl";

interface Recording {
  status: RunStatus;
}

export function isOn({ status }: Recording): boolean {
  return status === "recording" || status === "paused";
}

// What is on goes before what may be, and that before what isn't.
const order: readonly RunStatus[] = ["recording", "paused", "unknown", "stopped"];

/** Of all that record, the one that tells what the run does: it records as long as one of them does. */
export function leading<T extends Recording>(all: readonly T[]): T | undefined {
  const status = order.find((known) => all.some((one) => one.status === known));
  return all.find((one) => one.status === status);
}

/** Whether it recorded a run since its server started. */
export function wasRun(run: RunInfo): boolean {
  return isOn(run) || run.storedEvents > 0 || run.runningTime > 0;
}

/** What is recorded where no dumper records: a run of waves or rates alone, which the dumpers don't tell of. */
export function onWithoutEvents<T extends { type: string; counts: Recording }>(recorders: readonly T[]): T[] {
  const on = recorders.filter(({ counts }) => isOn(counts));
  return on.some(({ type }) => type === "dumper") ? [] : on;
}
