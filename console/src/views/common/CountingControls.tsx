import { server } from "../../app/state";
import { usePolled } from "../../app/usePolled";
import { isCounting, resetCounts, setCounting } from "../../server/queries";
import { useAction } from "./useAction";

/** Starts, stops and empties what counts at these paths; says whether they count. */
export function CountingControls(props: { paths: readonly string[] }): preact.JSX.Element {
  const { paths } = props;
  const action = useAction();
  const key = paths.join("\n");
  const status = usePolled(
    paths.length === 0 ? null : () => Promise.all(paths.map((path) => isCounting(server, path))),
    1_000,
    [key, action.isRunning],
  );
  const forAll = (what: (path: string) => Promise<void>) => () => action.run(async () => void (await Promise.all(paths.map(what))));
  const count = status.value?.filter((on) => on).length ?? 0;
  const text = status.value === null ? "…" : count === 0 ? "stopped" : count === paths.length ? "counting" : `${count} of ${paths.length} counting`;
  return (
    <div class="row">
      <span class={count > 0 ? "good" : "warn"} data-test="counting">{text}</span>
      <button type="button" disabled={action.isRunning || paths.length === 0} onClick={forAll((path) => setCounting(server, path, true))}>
        Start
      </button>
      <button type="button" disabled={action.isRunning || paths.length === 0} onClick={forAll((path) => setCounting(server, path, false))}>
        Stop
      </button>
      <button type="button" class="danger" disabled={action.isRunning || paths.length === 0} onClick={forAll((path) => resetCounts(server, path))}>
        Reset
      </button>
      {action.fault !== null && <span class="alarm">{action.fault}</span>}
    </div>
  );
}
