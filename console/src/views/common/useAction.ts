import { useEffect, useRef, useState } from "preact/hooks";
import { noterOfLate } from "../../app/faults";
import { Queue } from "../../base/Queue";
import { faultOf } from "../../server/poll";

export interface Action {
  /** Runs it, behind those that were begun before: nothing that is pressed is lost. */
  run: (what: () => Promise<void>) => void;
  /** Runs it at once, beside what runs already. */
  runNow: (what: () => Promise<void>) => void;
  /** What must not be pressed twice is disabled meanwhile. */
  isRunning: boolean;
  /** Why the last one failed, and what ran beside it; null when none did. */
  fault: string | null;
}

/** Something that the operator does and that may fail: told here, or on every view when this one was left. */
export function useAction(): Action {
  const [isRunning, setRunning] = useState(false);
  const [fault, setFault] = useState<string | null>(null);
  const queue = useRef(new Queue()).current;
  const isGone = useRef(false);
  useEffect(() => () => void (isGone.current = true), []);
  const follow = (done: Promise<void>): void => {
    const noteLate = noterOfLate();
    const fail = (text: string): void =>
      isGone.current ? noteLate(text) : setFault((other) => joined(other, text));
    setRunning(true);
    setFault(null);
    done
      .catch((error: unknown) => fail(faultOf(error)))
      .finally(() => setRunning(queue.isBusy));
  };
  return {
    run: (what) => follow(queue.add(what)),
    runNow: (what) => follow(queue.pass(what)),
    isRunning,
    fault,
  };
}

function joined(text: string | null, more: string): string {
  return text === null ? more : `${text} ${more}`;
}
