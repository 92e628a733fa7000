import { useState } from "preact/hooks";
import { awayText, isAway } from "../../app/reach";
import { blocks, server } from "../../app/state";
import { ofType } from "../../model/blocks";
import { resetCounts } from "../../server/queries";
import { Confirm } from "../common/Confirm";
import { useAction } from "../common/useAction";

/** A run begins with whatever was counted before it: says so, and empties everything that counts. */
export function ResetSpectra(): preact.JSX.Element | null {
  const action = useAction();
  const [isAsking, setAsking] = useState(false);
  const counting = ofType(blocks.value.value ?? [], "spectrum", "tof_histogram", "position", "image");
  if (counting.length === 0) {
    return null;
  }
  const names = counting.map(({ name }) => name).join(", ");
  const reset = (): void => {
    setAsking(false);
    action.run(async () => void (await Promise.all(counting.map(({ path }) => resetCounts(server, path)))));
  };
  return (
    <div class="row">
      <button
        type="button"
        class="danger"
        disabled={isAway.value || action.isRunning}
        title={isAway.value ? awayText : undefined}
        aria-busy={action.isRunning}
        onClick={() => setAsking(true)}
        data-test="reset-spectra"
      >
        Reset all spectra
      </button>
      <span class="faint grow">A new run doesn't empty spectra, times, maps and images.</span>
      {action.fault !== null && <p class="alarm" role="alert">{action.fault}</p>}
      {isAsking && (
        <Confirm
          title="Reset all spectra?"
          text={`All counts of ${names} become 0, on every console. What is recorded in files stays.`}
          action="Reset all spectra"
          onCancel={() => setAsking(false)}
          onConfirm={reset}
        />
      )}
    </div>
  );
}
