import { useState } from "preact/hooks";
import { awayText, isAway } from "../../app/reach";
import { server } from "../../app/state";
import { usePolled } from "../../app/usePolled";
import { isCounting, resetCounts, setCounting } from "../../server/queries";
import { Confirm } from "./Confirm";
import { useAction } from "./useAction";

interface CountingProps {
  paths: readonly string[];
  /** Not of what counts always: there is nothing to start and stop. */
  hasState?: boolean;
}

/** Starts, stops and empties what counts at these paths, for all clients; says whether they count. */
export function CountingControls({ paths, hasState = true }: CountingProps): preact.JSX.Element {
  const action = useAction();
  const [isAsking, setAsking] = useState(false);
  const key = paths.join("\n");
  const status = usePolled(
    paths.length === 0 || !hasState ? null : () => Promise.all(paths.map((path) => isCounting(server, path))),
    1_000,
    [key],
  );
  const isIdle = !action.isRunning && paths.length > 0 && !isAway.value;
  const forAll = (what: (path: string) => Promise<void>): void =>
    action.run(async () => void (await Promise.all(paths.map(what))));
  const count = (on: boolean): void => forAll((path) => setCounting(server, path, on));
  const reset = (): void => {
    setAsking(false);
    forAll((path) => resetCounts(server, path));
  };
  const names = paths.map((path) => path.slice(path.lastIndexOf("/") + 1)).join(", ");
  return (
    <div class="row" aria-busy={action.isRunning} title={isAway.value ? awayText : undefined}>
      {hasState && (
        <>
          <Counting states={status.fault === null && !isAway.value ? status.value : null} fault={status.fault} />
          <button type="button" disabled={!isIdle} onClick={() => count(true)}>
            Start
          </button>
          <button type="button" disabled={!isIdle} onClick={() => count(false)}>
            Stop
          </button>
        </>
      )}
      <button type="button" class="danger" disabled={!isIdle} onClick={() => setAsking(true)}>
        Reset
      </button>
      {action.fault !== null && <span class="alarm">{action.fault}</span>}
      {isAsking && (
        <Confirm
          title={`Reset ${names}?`}
          text="All counts of all its channels become 0, on every console. What is recorded in files stays."
          action="Reset"
          onCancel={() => setAsking(false)}
          onConfirm={reset}
        />
      )}
    </div>
  );
}

function Counting(props: { states: readonly boolean[] | null; fault: string | null }): preact.JSX.Element {
  const { states, fault } = props;
  if (states === null) {
    return <span class="faint" data-test="counting">{fault === null && !isAway.value ? "…" : "not known"}</span>;
  }
  const count = states.filter((on) => on).length;
  const some = count === states.length ? "counting" : `${count} of ${states.length} counting`;
  return (
    <span class={count > 0 ? "good" : "warn"} data-test="counting">
      {count === 0 ? "stopped" : some}
    </span>
  );
}
