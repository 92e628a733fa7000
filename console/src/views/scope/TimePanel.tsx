import { NumberInput } from "../common/NumberInput";
import { timeText, unitFor } from "./timeAxis";
import type { Cursor } from "./useCursor";
import type { Scope } from "./useScope";

/** How long a sample is, and where the cursor stands. */
export function TimePanel(props: { scope: Scope; cursor: Cursor }): preact.JSX.Element {
  const { scope, cursor } = props;
  const unit = unitFor(scope.view[1] - scope.view[0], scope.nsPerSample);
  const time = cursor.at === null || scope.nsPerSample === null ? "" : `, ${timeText(cursor.at, unit)}`;
  const distance = cursor.at === null || cursor.mark === null ? null : cursor.at - cursor.mark;
  return (
    <div class="panel row">
      <label title="The board's sampling interval; empty counts samples.">
        ns per sample{" "}
        <NumberInput
          class="short"
          min="0"
          placeholder="none"
          value={scope.nsPerSample ?? ""}
          onEnter={scope.setNs}
          data-test="scope-ns"
        />
      </label>
      <button
        type="button"
        aria-pressed={cursor.mark !== null}
        onClick={cursor.toggleMark}
        disabled={cursor.at === null}
      >
        Mark
      </button>
      <p data-test="scope-cursor">
        {cursor.at === null ? "Cursor –" : `Cursor sample ${cursor.at}${time}`}
        {distance !== null && `, ${timeText(distance, unit)} from the mark`}
      </p>
    </div>
  );
}
