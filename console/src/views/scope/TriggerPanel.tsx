import type { Trace } from "../../server/scope";
import { NumberInput } from "../common/NumberInput";
import { keyOf, labelOf } from "./traces";
import type { Scope } from "./useScope";

/** What a waveform must do to be held. */
export function TriggerPanel(props: { scope: Scope; shown: readonly Trace[] }): preact.JSX.Element {
  const { scope, shown } = props;
  const { trigger, setTrigger } = scope;
  const isKnown = shown.some((trace) => keyOf(trace) === trigger.key);
  return (
    <fieldset class="panel row">
      <legend>Trigger</legend>
      <label>
        Trace{" "}
        <select
          value={trigger.key}
          onChange={(event) => scope.triggerOn(event.currentTarget.value)}
          data-test="trigger-trace"
        >
          {!isKnown && <option value={trigger.key}>{`Ch ${trigger.key} (not shown)`}</option>}
          {shown.map((trace) => <option value={keyOf(trace)}>{labelOf(trace)}</option>)}
        </select>
      </label>
      <label>
        <select
          aria-label="Edge"
          value={trigger.isRising ? "rising" : "falling"}
          onChange={(event) => setTrigger({ ...trigger, isRising: event.currentTarget.value === "rising" })}
          data-test="trigger-edge"
        >
          <option value="rising">rises through</option>
          <option value="falling">falls through</option>
        </select>
      </label>
      <label>
        Level{" "}
        <NumberInput
          class="short"
          value={trigger.level}
          onEnter={(text) => setTrigger({ ...trigger, level: Number(text) || 0 })}
          data-test="trigger-level"
        />
      </label>
      <p class="faint">
        Looked for in what the page reads, five waveforms a second at most. Digital traces are 0 and 1.
      </p>
    </fieldset>
  );
}
