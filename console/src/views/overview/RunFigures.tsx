import { duration, short, whole } from "../../base/format";
import { isOn, wasRun } from "../../model/runState";
import type { RunInfo } from "../../server/runControl";

const pauses = "As the server tells it: since the start, pauses included once the run goes on";

/** What a dumper says of its run, or of the last one; whether it still does so isn't always known. */
export function RunFigures(props: { run: RunInfo; isKnown: boolean }): preact.JSX.Element {
  const { run, isKnown } = props;
  return (
    <dl class="figures" data-test={`run-${run.name}`}>
      <dt>state of {run.name}</dt>
      <dd class={isKnown ? `run ${run.status}` : "warn"} data-test="run-status">
        {isKnown ? run.status : `not known, was ${run.status}`}
      </dd>
      <dt>{isOn(run) ? "run" : "last run"}</dt>
      <dd class="long" data-test="run-id">{wasRun(run) ? run.id : "none yet"}</dd>
      <dt title={pauses}>running time</dt>
      <dd title={pauses}>{duration(run.runningTime)}</dd>
      <dt>events</dt>
      <dd data-test="run-events">{whole(run.storedEvents)}</dd>
      <dt>rate</dt>
      <dd>{run.status === "recording" ? `${short(run.eventRate)} /s` : "–"}</dd>
      <dt>in the current file</dt>
      <dd>{`${short(run.usedSpace)}${run.usedSpace < 1000 ? " " : ""}B`}</dd>
    </dl>
  );
}
