import { forgetLateFaults, lateFaults } from "./faults";

/** Says, until somebody has read it, what failed on a view that was left meanwhile. */
export function LateFaults(): preact.JSX.Element | null {
  const faults = lateFaults.value;
  return faults.length === 0 ? null : (
    <div class="alarm banner row" role="alert" data-test="late-faults">
      <div class="grow long">
        {faults.map((text) => (
          <p>{text}</p>
        ))}
      </div>
      <button type="button" onClick={forgetLateFaults}>
        I have read it
      </button>
    </div>
  );
}
