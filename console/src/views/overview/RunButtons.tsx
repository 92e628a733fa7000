import { signal } from "@preact/signals";
import { useState } from "preact/hooks";
import { awayText, isAway } from "../../app/reach";
import { server } from "../../app/state";
import { isDated, nextOfDay, nextRunId, runIdFault } from "../../model/runId";
import { isOn } from "../../model/runState";
import { resumeRun, type RunInfo, type RunStatus, sendRunCommand } from "../../server/runControl";
import { IdTaken, startRun } from "../../server/startRun";
import { Confirm } from "../common/Confirm";
import { useAction } from "../common/useAction";
import { knownRecorders } from "./useRecorders";

export interface RunButtonsProps {
  /** The last run, or the current one. */
  last: RunInfo | undefined;
  current: RunInfo | null;
  /** Of the run of events. */
  status: RunStatus;
  /** Of all that records, also waves or rates without events. */
  anyStatus: RunStatus;
  isKnown: boolean;
}

/** What is asked for once more before it is ordered. */
type Asked = "stop_dump" | "reset";

// What the operator typed, and the next one of that; null where the id is proposed.
const typedId = signal<string | null>(null);
// The last of the proposed ids that this page knows to be taken: not every run is one that the dumpers tell of.
const takenId = signal<string | null>(null);

/** Starts the run; the next one is proposed when this one begins, and when it can't for its id. */
async function begin(id: string): Promise<void> {
  try {
    await startRun(server, id, knownRecorders());
    proposeBehind(id);
  } catch (error) {
    if (error instanceof IdTaken) {
      proposeBehind(id);
    }
    throw error;
  }
}

/** The proposal goes on following day and runs, unless the operator has names of his own. */
function proposeBehind(id: string): void {
  typedId.value = isDated(id) ? null : nextRunId(id);
  takenId.value = isDated(id) ? id : takenId.value;
}

/** Nothing can be pressed while it isn't known what the run does. */
export function RunButtons(props: RunButtonsProps): preact.JSX.Element {
  const { last, current, status, anyStatus, isKnown } = props;
  const id = typedId.value ?? nextOfDay(new Date(), [last?.id, takenId.value]);
  const action = useAction();
  const [asking, ask] = useState<Asked | null>(null);
  const isBusy = isOn({ status: anyStatus });
  const fault = runIdFault(id);
  const isLocked = !isKnown || action.isRunning;
  const submit = (event: Event): void => {
    event.preventDefault();
    if (!isBusy && fault === null && !isLocked) {
      action.run(() => begin(id));
    }
  };
  const order = (cmd: Parameters<typeof sendRunCommand>[1]): void => {
    ask(null);
    action.run(() => sendRunCommand(server, cmd));
  };
  return (
    <form class="stack" onSubmit={submit} aria-busy={action.isRunning}>
      <IdField id={id} disabled={isBusy || action.isRunning} />
      {fault !== null && <p class="warn">{fault}</p>}
      <div class="row" title={isAway.value ? awayText : undefined}>
        <button type="submit" class="main" disabled={isBusy || fault !== null || isLocked} data-test="run-start">
          Start run
        </button>
        <Press what="run-pause" disabled={status !== "recording" || isLocked} onClick={() => order("pause_dump")}>
          Pause
        </Press>
        <Press
          what="run-restart"
          disabled={status !== "paused" || isLocked}
          onClick={() => action.run(() => resumeRun(server))}
        >
          Go on
        </Press>
        <Press what="run-stop" disabled={anyStatus === "stopped" || isLocked} onClick={() => ask("stop_dump")}>
          Stop run
        </Press>
        <Press what="reset" isDanger={true} disabled={isBusy || isLocked} onClick={() => ask("reset")}>
          Reset sources
        </Press>
      </div>
      {action.fault !== null && <p class="alarm long" role="alert" data-test="run-fault">{action.fault}</p>}
      {asking !== null && (
        <ConfirmOrder asking={asking} run={current} onCancel={() => ask(null)} onConfirm={() => order(asking)} />
      )}
    </form>
  );
}

interface ConfirmOrderProps {
  asking: Asked;
  run: RunInfo | null;
  onCancel: () => void;
  onConfirm: () => void;
}

function ConfirmOrder({ asking, run, onCancel, onConfirm }: ConfirmOrderProps): preact.JSX.Element {
  return asking === "stop_dump" ? (
    <Confirm
      title={run === null ? "Stop the run?" : `Stop run ${run.id}?`}
      text="It ends, and its files with it: it can't go on after that, as it can after a pause."
      action="Stop run"
      onCancel={onCancel}
      onConfirm={onConfirm}
    />
  ) : (
    <Confirm
      title="Reset all sources?"
      text="Every board is stopped, its waiting data are thrown away, and it starts again. Counts and files stay."
      action="Reset sources"
      onCancel={onCancel}
      onConfirm={onConfirm}
    />
  );
}

function IdField(props: { id: string; disabled: boolean }): preact.JSX.Element {
  return (
    <label class="row">
      id of the next run
      <input
        class="grow"
        data-test="run-id-input"
        title={`${props.id}: also the name of the run's folder in the storage folder of the configuration`}
        value={props.id}
        disabled={props.disabled}
        onInput={(event) => (typedId.value = event.currentTarget.value)}
      />
    </label>
  );
}

interface PressProps {
  what: string;
  isDanger?: boolean;
  disabled: boolean;
  onClick: () => void;
  children: string;
}

function Press({ what, isDanger = false, disabled, onClick, children }: PressProps): preact.JSX.Element {
  return (
    <button type="button" class={isDanger ? "danger" : ""} disabled={disabled} onClick={onClick} data-test={what}>
      {children}
    </button>
  );
}
