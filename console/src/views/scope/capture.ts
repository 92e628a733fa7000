import type { Reading } from "../../server/poll";
import type { Trace } from "../../server/scope";
import { type FirstTraces, onlyThese, sameTraces, withFirst } from "./traces";
import { crossingIn, type Trigger } from "./trigger";

/** "run" shows every waveform, "triggered" those that trigger, "single" freezes with the first of them. */
export type Mode = "run" | "triggered" | "single" | "frozen";

/** What the screen shows, and why. */
export interface Capture {
  mode: Mode;
  shown: readonly Trace[] | null;
  /** When it came, as Date.now() tells. */
  shownAt: number;
  /** Where it triggered; -1 when it didn't. */
  crossing: number;
  /** What the scale fits and the trigger's level is proposed from: the first that were read since the last fit. */
  first: FirstTraces;
  /** The last that was read, shown or not; and when it last differed from the one before, as performance.now() tells. */
  latest: readonly Trace[] | null;
  changedAt: number;
}

export const nothingCaptured: Capture = {
  mode: "run",
  shown: null,
  shownAt: 0,
  crossing: -1,
  first: new Map(),
  latest: null,
  changedAt: 0,
};

/** When traces came: as Date.now() and as performance.now() tell. */
export type When = Pick<Reading<unknown>, "at" | "heardAt">;

/** With traces that were read then. A waveform that is read again triggers only once. */
export function captured(before: Capture, traces: readonly Trace[], trigger: Trigger, when: When): Capture {
  const isNew = before.latest === null || !sameTraces(before.latest, traces);
  const changedAt = isNew ? when.heardAt : before.changedAt;
  const first = isNew ? withFirst(before.first, traces) : before.first;
  const read = { ...before, latest: traces, changedAt, first };
  const crossing = crossingIn(traces, trigger);
  const isHeld = before.mode !== "run" && (crossing < 0 || !isNew);
  if (before.mode === "frozen" || isHeld) {
    return read;
  }
  return {
    ...read,
    mode: before.mode === "single" ? "frozen" : before.mode,
    shown: traces,
    shownAt: when.at,
    crossing,
  };
}

/** With a scale that fits what is shown now. */
export function refitted(capture: Capture): Capture {
  return { ...capture, first: onlyThese(capture.shown ?? []) };
}
