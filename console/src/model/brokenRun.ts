import type { RunInfo } from "../server/runControl";
import { isOn } from "./runState";

/**
 * The id of a run that ended with its server, by what two answers in a row say; null when there is none. A run
 * that somebody stopped keeps its id and its counts; a server that was started anew knows of none.
 */
export function brokenRun(before: readonly RunInfo[], after: readonly RunInfo[]): string | null {
  const ran = before.find(isOn);
  const isNew = after.every((run) => !isOn(run) && run.storedEvents === 0 && run.runningTime === 0);
  return ran !== undefined && isNew && after.every(({ id }) => id !== ran.id) ? ran.id : null;
}
