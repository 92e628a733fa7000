import { signal } from "@preact/signals";
import { useState } from "preact/hooks";
import { duration, short, whole } from "../../base/format";
import { account, now, runs, server } from "../../app/state";
import { type Entry, lossesOf } from "../../model/ledger";
import { nextRunId, proposeRunId, runIdFault } from "../../model/runId";
import { resumeRun, type RunInfo, type RunStatus, sendRunCommand, startRun } from "../../server/runControl";
import { Confirm } from "../common/Confirm";
import { Freshness } from "../common/Freshness";
import { useAction } from "../common/useAction";

// Null until the operator, or a run that was begun, says otherwise.
const chosenId = signal<string | null>(null);

/** Behind the last run of this day, if there was one. */
function proposed(last: RunInfo | undefined): string {
  const first = proposeRunId(new Date(), 1);
  return last !== undefined && last.id.startsWith(first.slice(0, -3)) ? nextRunId(last.id) : first;
}

/** What the run is, and everything that is done with it. */
export function RunPanel(): preact.JSX.Element {
  const reading = runs.value;
  const all = reading.value ?? [];
  return (
    <section class="panel" aria-label="Run">
      <h2>Run</h2>
      {all.map((run) => (
        <RunFigures run={run} key={run.name} />
      ))}
      {reading.value !== null && all.length === 0 && (
        <p class="faint">
          The configuration has no block of type dumper: nothing records events, and the server tells nothing of a run.
        </p>
      )}
      <RunButtons
        id={chosenId.value ?? proposed(all[0])}
        status={commonStatus(all)}
        isKnown={reading.fault === null && now.value - reading.at < staleMs}
      />
      <Freshness reading={reading} intervalMs={1_000} />
    </section>
  );
}

const staleMs = 3_000;

/** Of all dumpers; recording as long as one of them is. */
function commonStatus(all: readonly RunInfo[]): RunStatus {
  const known: RunStatus[] = ["recording", "paused", "stopped"];
  return known.find((status) => all.some((run) => run.status === status)) ?? "unknown";
}

function RunFigures(props: { run: RunInfo }): preact.JSX.Element {
  const { run } = props;
  const entry = account.value.value?.ledger.entries.find(({ type, name }) => type === "dumper" && name === run.name);
  const isOn = run.status === "recording" || run.status === "paused";
  const wasRun = isOn || run.storedEvents > 0 || run.runningTime > 0;
  return (
    <dl class="figures" data-test={`run-${run.name}`}>
      <dt>state of {run.name}</dt>
      <dd class={`run ${run.status}`} data-test="run-status">{run.status}</dd>
      <dt>{isOn ? "run" : "last run"}</dt>
      <dd data-test="run-id">{wasRun ? run.id : "none yet"}</dd>
      <dt>running time</dt>
      <dd>{duration(run.runningTime)}</dd>
      <dt>events</dt>
      <dd data-test="run-events">{whole(run.storedEvents)}</dd>
      <dt>rate</dt>
      <dd>{`${short(run.eventRate)} /s`}</dd>
      <dt>in the current file</dt>
      <dd>{`${short(run.usedSpace)}${run.usedSpace < 1000 ? " " : ""}B`}</dd>
      {entry !== undefined && <Losses entry={entry} />}
    </dl>
  );
}

function Losses(props: { entry: Entry }): preact.JSX.Element {
  const lost = [...lossesOf(props.entry)];
  const text = lost.map(([fate, count]) => `${whole(count)} ${fate.replace(/_/g, " ")}`).join(", ");
  return (
    <>
      <dt>lost since the server's start</dt>
      <dd class={lost.length > 0 ? "alarm" : "good"}>{lost.length > 0 ? text : "none"}</dd>
    </>
  );
}

/** Nothing can be pressed while it isn't known what the run does. */
function RunButtons(props: { id: string; status: RunStatus; isKnown: boolean }): preact.JSX.Element {
  const { id, status, isKnown } = props;
  const action = useAction();
  const [isAsking, setAsking] = useState(false);
  const isOn = status === "recording" || status === "paused";
  const fault = runIdFault(id);
  const begin = (): void =>
    action.run(async () => {
      chosenId.value = nextRunId(id); // what is proposed next, also when this one exists
      await startRun(server, id);
    });
  const submit = (event: Event): void => {
    event.preventDefault();
    if (!isOn && fault === null && !isLocked) {
      begin();
    }
  };
  const resume = (): void => action.run(() => resumeRun(server));
  const isLocked = !isKnown || action.isRunning;
  const send = (cmd: Parameters<typeof sendRunCommand>[1]) => () => action.run(() => sendRunCommand(server, cmd));
  return (
    <form class="stack" onSubmit={submit}>
      <label class="row">
        id of the next run
        <input
          class="grow"
          data-test="run-id-input"
          value={id}
          disabled={isOn}
          onInput={(event) => (chosenId.value = event.currentTarget.value)}
        />
      </label>
      {fault !== null && <p class="warn">{fault}</p>}
      <div class="row">
        <button type="submit" class="main" disabled={isOn || fault !== null || isLocked} data-test="run-start">
          Start run
        </button>
        <button type="button" disabled={status !== "recording" || isLocked} onClick={send("pause_dump")} data-test="run-pause">
          Pause
        </button>
        <button type="button" disabled={status !== "paused" || isLocked} onClick={resume} data-test="run-restart">
          Go on
        </button>
        <button type="button" disabled={status === "stopped" || isLocked} onClick={send("stop_dump")} data-test="run-stop">
          Stop run
        </button>
        <button type="button" class="danger" disabled={isOn || isLocked} onClick={() => setAsking(true)} data-test="reset">
          Reset sources
        </button>
      </div>
      {action.fault !== null && <p class="alarm" role="alert" data-test="run-fault">{action.fault}</p>}
      {isAsking && (
        <Confirm
          title="Reset all sources?"
          text="Every board is stopped, its waiting data are thrown away, and it is started again. Counts and files stay."
          action="Reset sources"
          onCancel={() => setAsking(false)}
          onConfirm={() => { setAsking(false); send("reset")(); }}
        />
      )}
    </form>
  );
}
