import { Unreachable } from "./RouteSocket";
import { onWake } from "./wake";

/** What is known of something that is asked again and again. */
export interface Reading<T> {
  /** The last good one; nothing before the first. */
  value: T | null;
  /** When it came, as Date.now() tells: for display. */
  at: number;
  /** The same as performance.now() tells, which no clock that is set puts wrong: for ages. */
  heardAt: number;
  /** Why the last question has no good answer; nothing when it has. */
  fault: string | null;
}

export const noReading: Reading<never> = { value: null, at: 0, heardAt: 0, fault: null };

export interface Pace {
  /** From question to question; a slow answer delays the next one, there are never two under way. */
  intervalMs: number;
  hidden?: () => boolean;
}

/** A hidden page asks so often. */
const hiddenIntervalMs = 10_000;
const retryMs = 1_000;

/** Asks until the function that it returns is called. `tell` gets each reading. */
export function poll<T>(ask: () => Promise<T>, pace: Pace, tell: (reading: Reading<T>) => void): () => void {
  let stopped = false;
  let timer: ReturnType<typeof setTimeout> | null = null;
  let last: Reading<T> = noReading;
  const hidden = pace.hidden ?? (() => document.hidden);

  const round = async (): Promise<void> => {
    const began = performance.now();
    try {
      last = { value: await ask(), at: Date.now(), heardAt: performance.now(), fault: null };
    } catch (error) {
      last = { ...last, fault: faultOf(error) };
    }
    if (!stopped) {
      tell(last);
      const rest = began + pace.intervalMs - performance.now();
      const wait = last.fault === null ? Math.max(0, rest) : retryMs;
      schedule(hidden() ? Math.max(hiddenIntervalMs, wait) : wait);
    }
  };
  const schedule = (ms: number): void => {
    timer = setTimeout(() => {
      timer = null;
      void round();
    }, ms);
  };
  const cancel = (): boolean => {
    const wasWaiting = timer !== null;
    if (timer !== null) {
      clearTimeout(timer);
      timer = null;
    }
    return wasWaiting;
  };
  // What is looked at again, and what comes from a server that is back, shows what is, not what was.
  const forget = onWake(() => {
    if (!hidden() && cancel()) {
      void round();
    }
  });
  void round();
  return () => {
    stopped = true;
    cancel();
    forget();
  };
}

const unreached = "The server can't be reached: ";

/** Whether a fault is that of a server that doesn't answer, not one of what it answered. */
export function isUnreached(fault: string): boolean {
  return fault.startsWith(unreached);
}

export function faultOf(error: unknown): string {
  if (error instanceof Unreachable) {
    return `${unreached}${error.message}.`;
  }
  return error instanceof Error ? error.message : String(error);
}
