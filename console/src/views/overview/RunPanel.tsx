import { runs } from "../../app/state";
import { isAway, isKnown } from "../../app/reach";
import { isOn, leading, onWithoutEvents, wasRun } from "../../model/runState";
import type { RunStatus } from "../../server/runControl";
import { Freshness } from "../common/Freshness";
import { ResetSpectra } from "./ResetSpectra";
import { RunButtons } from "./RunButtons";
import { RunFigures } from "./RunFigures";
import { RunLosses } from "./RunLosses";
import { type Recorded, useRecorders } from "./useRecorders";

/** What the run is, and everything that is done with it. */
export function RunPanel(): preact.JSX.Element {
  const reading = runs.value;
  const all = reading.value ?? [];
  const isCurrent = isKnown(reading) && !isAway.value;
  const recorders = useRecorders();
  const others = isKnown(recorders) ? onWithoutEvents(recorders.value ?? []) : null;
  const isAnyOn = all.some(isOn) || (others ?? []).length > 0;
  const wasAny = all.some(wasRun) || (recorders.value ?? []).some(hasTried);
  return (
    <section class="panel" aria-label="Run">
      <h2>Run</h2>
      {all.map((run) => (
        <RunFigures run={run} isKnown={isCurrent} key={run.name} />
      ))}
      {(isAnyOn || wasAny) && <RunLosses reading={recorders} isOver={!isAnyOn} />}
      {isCurrent && !all.some(isOn) && <WithoutEvents recorded={others ?? []} />}
      {reading.value !== null && all.length === 0 && (
        <p class="faint">
          The configuration has no block of type dumper: nothing records events, and the server tells nothing of a
          run.
        </p>
      )}
      <RunButtons
        last={leading(all)}
        current={all.find(isOn) ?? null}
        status={leading(all)?.status ?? "unknown"}
        anyStatus={leading([...all, ...statesOf(others)])?.status ?? "unknown"}
        isKnown={isCurrent}
      />
      <ResetSpectra />
      <Freshness reading={reading} intervalMs={1_000} />
    </section>
  );
}

/** Whether it had something to write, well or not. */
function hasTried({ counts }: Recorded): boolean {
  return counts.recorded + counts.failed > 0;
}

/** Unknown where they don't tell; a run of events needs no other word. */
function statesOf(others: readonly Recorded[] | null): { status: RunStatus }[] {
  return others === null ? [{ status: "unknown" }] : others.map(({ counts }) => counts);
}

/** A run of waves or rates alone. */
function WithoutEvents(props: { recorded: readonly Recorded[] }): preact.JSX.Element | null {
  const names = props.recorded.map(({ name }) => name).join(", ");
  return names === "" ? null : (
    <p class="warn" data-test="run-without-events">
      {`Events aren't recorded: is "enable_list" false in the "storage" of the configuration, or can its ` +
        `"file_path" not be written? Recorded is what comes to ${names}: "Stop run" ends it.`}
    </p>
  );
}
