import { short } from "../base/format";
import { account, now, runs } from "./state";

const staleMs = 5_000;

/** The run and the flow in a few words, on every view. */
export function StatusLine(): preact.JSX.Element {
  const [run] = runs.value.value ?? [];
  const isOld = (reading: { at: number; fault: string | null }): boolean =>
    reading.fault !== null || (now.value - reading.at > staleMs && !document.hidden);
  const read = account.value.value;
  const rate = read?.ledger.entries.reduce(
    (sum, entry, i) => sum + (entry.type === "source" ? (read.flows[i]?.rate ?? 0) : 0),
    0,
  );
  return (
    <p class="status" data-test="status">
      {run !== undefined && (
        <span class={isOld(runs.value) ? "warn" : `run ${run.status}`}>
          {isOld(runs.value) ? "run: not known" : run.status === "stopped" ? "no run" : `run ${run.id} ${run.status}`}
        </span>
      )}
      <span>{rate === undefined || isOld(account.value) ? "" : `${short(rate)} records/s`}</span>
    </p>
  );
}
