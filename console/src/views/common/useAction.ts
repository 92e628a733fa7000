import { useRef, useState } from "preact/hooks";
import { Queue } from "../../base/Queue";
import { faultOf } from "../../server/poll";

export interface Action {
  /** Runs it, behind those that were begun before: nothing that is pressed is lost. */
  run: (what: () => Promise<void>) => void;
  /** What must not be pressed twice is disabled meanwhile. */
  isRunning: boolean;
  /** Why the last one failed; null when it didn't. */
  fault: string | null;
}

/** Something that the operator does and that may fail. */
export function useAction(): Action {
  const [isRunning, setRunning] = useState(false);
  const [fault, setFault] = useState<string | null>(null);
  const queue = useRef(new Queue()).current;
  const run = (what: () => Promise<void>): void => {
    setRunning(true);
    setFault(null);
    queue
      .add(what)
      .catch((error: unknown) => setFault(faultOf(error)))
      .finally(() => setRunning(queue.isBusy));
  };
  return { run, isRunning, fault };
}
