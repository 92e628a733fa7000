import { short } from "../base/format";
import { leading } from "../model/runState";
import { isKnown } from "./reach";
import { account, type Account, runs } from "./state";

/** The run and the flow in a few words, on every view. */
export function StatusLine(): preact.JSX.Element {
  const run = leading(runs.value.value ?? []);
  const read = account.value.value;
  const runText = run?.status === "stopped" ? "no events recorded" : `run ${run?.id} ${run?.status}`;
  return (
    <p class="status" data-test="status">
      {run !== undefined && (
        <span class={isKnown(runs.value) ? `run ${run.status}` : "warn"} title={runText}>
          {isKnown(runs.value) ? runText : "run: not known"}
        </span>
      )}
      <span>{read === null || !isKnown(account.value) ? "" : `${short(sourceRate(read))} records/s`}</span>
    </p>
  );
}

/** What all sources receive a second. */
export function sourceRate({ ledger, flows }: Account): number {
  return ledger.entries.reduce((sum, { type }, i) => sum + (type === "source" ? (flows[i]?.rate ?? 0) : 0), 0);
}
