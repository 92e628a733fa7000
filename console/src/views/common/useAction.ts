import { useState } from "preact/hooks";
import { faultOf } from "../../server/poll";

export interface Action {
  /** Runs it, unless it runs already. */
  run: (what: () => Promise<void>) => void;
  isRunning: boolean;
  /** Why the last one failed; null when it didn't. */
  fault: string | null;
}

/** Something that the operator does and that may fail. */
export function useAction(): Action {
  const [isRunning, setRunning] = useState(false);
  const [fault, setFault] = useState<string | null>(null);
  const run = (what: () => Promise<void>): void => {
    if (isRunning) {
      return;
    }
    setRunning(true);
    setFault(null);
    what()
      .catch((error: unknown) => setFault(faultOf(error)))
      .finally(() => setRunning(false));
  };
  return { run, isRunning, fault };
}
