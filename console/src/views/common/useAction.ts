import { useRef, useState } from "preact/hooks";
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

/** Something that the operator does and that may fail. */
export function useAction(): Action {
  const [isRunning, setRunning] = useState(false);
  const [fault, setFault] = useState<string | null>(null);
  const queue = useRef(new Queue()).current;
  const follow = (done: Promise<void>): void => {
    setRunning(true);
    setFault(null);
    done
      .catch((error: unknown) => setFault((other) => joined(other, faultOf(error))))
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
