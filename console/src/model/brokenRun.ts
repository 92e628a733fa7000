import type { RunInfo } from "../server/runControl";
import { isOn, wasRun } from "./runState";

/**
 * Whether the run with this id, which was on when it was last asked for, ended with its server. A run that
 * somebody stopped keeps its id and its counts; a server that was started anew knows of none.
 */
export function isBroken(id: string, now: readonly RunInfo[]): boolean {
  return !now.some((run) => wasRun(run) || run.id === id);
}

/** The id of the run that is on; null when none is. */
export function idOn(now: readonly RunInfo[]): string | null {
  return now.find(isOn)?.id ?? null;
}
