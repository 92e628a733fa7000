import { blocks, runs } from "../../app/state";
import { isAway, isKnown } from "../../app/reach";
import { ofType } from "../../model/blocks";
import { isOn } from "../../model/brokenRun";
import { recorders } from "../../server/dumpCounts";
import type { RunInfo, RunStatus } from "../../server/runControl";
import { Freshness } from "../common/Freshness";
import { ResetSpectra } from "./ResetSpectra";
import { RunButtons } from "./RunButtons";
import { RunFigures, wasRun } from "./RunFigures";
import { RunLosses } from "./RunLosses";

/** What the run is, and everything that is done with it. */
export function RunPanel(): preact.JSX.Element {
  const reading = runs.value;
  const all = reading.value ?? [];
  const isCurrent = isKnown(reading) && !isAway.value;
  return (
    <section class="panel" aria-label="Run">
      <h2>Run</h2>
      {all.map((run) => (
        <RunFigures run={run} isKnown={isCurrent} key={run.name} />
      ))}
      {all.some(wasRun) && (
        <RunLosses blocks={ofType(blocks.value.value ?? [], ...recorders)} isOver={!all.some(isOn)} />
      )}
      {reading.value !== null && all.length === 0 && (
        <p class="faint">
          The configuration has no block of type dumper: nothing records events, and the server tells nothing of a
          run.
        </p>
      )}
      <RunButtons
        last={all[0]}
        current={all.find(isOn) ?? null}
        status={commonStatus(all)}
        isKnown={isCurrent}
      />
      <ResetSpectra />
      <Freshness reading={reading} intervalMs={1_000} />
    </section>
  );
}

/** Of all dumpers; recording as long as one of them is. */
function commonStatus(all: readonly RunInfo[]): RunStatus {
  const known: RunStatus[] = ["recording", "paused", "stopped"];
  return known.find((status) => all.some((run) => run.status === status)) ?? "unknown";
}
