import { timeOfDay } from "../../base/format";
import { clock } from "../../app/state";
import { Freshness } from "../common/Freshness";
import type { Mode } from "./capture";
import { areAllZero } from "./traces";
import { type Scope, tracesMs } from "./useScope";

const modes: readonly [Mode, string, string][] = [
  ["run", "Run", "Shows every waveform that is read"],
  ["triggered", "Triggered", "Shows the waveforms that trigger, and holds the last of them"],
  ["single", "Single", "Waits for the next waveform that triggers and freezes it"],
  ["frozen", "Freeze", "Keeps what is shown"],
];

/** What the screen does, and whether it is alive. */
export function ScopeStatus(props: { scope: Scope }): preact.JSX.Element {
  const { scope } = props;
  const { mode, shown, shownAt } = scope.capture;
  return (
    <div class="row" data-test="scope-status">
      {modes.map(([name, text, title]) => (
        <button
          type="button"
          title={title}
          aria-pressed={mode === name}
          onClick={() => scope.setMode(name)}
          data-test={`scope-${name}`}
        >
          {text}
        </button>
      ))}
      <button type="button" onClick={scope.fit} title="Shows what is shown now whole, at one scale">
        Fit
      </button>
      <label>
        <input
          type="checkbox"
          checked={scope.isStacked}
          onChange={(event) => scope.setStacked(event.currentTarget.checked)}
        />{" "}
        one below the other
      </label>
      {mode === "frozen" ? (
        <p class="warn" data-test="scope-held">
          {shown === null ? "Frozen before anything came." : `Frozen: shown is what was at ${timeOfDay(shownAt)}.`}
        </p>
      ) : scope.channels.length === 0 ? (
        <p class="warn">No channel is chosen.</p>
      ) : (
        <>
          <Freshness reading={scope.reading} intervalMs={tracesMs} />
          <Waiting scope={scope} />
        </>
      )}
    </div>
  );
}

const silenceMs = 5_000;

/** Why nothing moves though answers come. */
function Waiting(props: { scope: Scope }): preact.JSX.Element | null {
  const { mode, shown, shownAt, latest, changedAt } = props.scope.capture;
  if (latest === null) {
    return null;
  }
  if (areAllZero(latest)) {
    return (
      <p class="warn" data-test="scope-empty">
        All samples are 0: no waveform has come. Are the source's "waveform" endpoint and these channels enabled?
      </p>
    );
  }
  const age = clock.value - changedAt;
  if (age > silenceMs) {
    const text = `No new waveform for ${Math.round(age / 1000)} s.`;
    return <p class="alarm" role="alert" data-test="scope-silence">{text}</p>;
  }
  if (mode === "run") {
    return null;
  }
  const held = shown === null || shownAt === 0 ? "" : ` Shown is that of ${timeOfDay(shownAt)}.`;
  return <p data-test="scope-held">{`Waiting for the trigger.${held}`}</p>;
}
