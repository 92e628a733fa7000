import { short } from "./format";
import { account, runs } from "./state";

/** The run and the flow in a few words, on every view. */
export function StatusLine(): preact.JSX.Element {
  const [run] = runs.value.value ?? [];
  const read = account.value.value;
  const rate = read?.ledger.entries.reduce(
    (sum, entry, i) => sum + (entry.type === "source" ? (read.flows[i]?.rate ?? 0) : 0),
    0,
  );
  return (
    <p class="status" data-test="status">
      {run !== undefined && (
        <span class={`run ${run.status}`}>
          {run.status === "stopped" ? "no run" : `run ${run.id} ${run.status}`}
        </span>
      )}
      <span>{rate === undefined ? "" : `${short(rate)} records/s`}</span>
    </p>
  );
}
