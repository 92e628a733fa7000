import { timeOfDay } from "../base/format";
import { broken, forgetBroken } from "./broken";

/** Says, until somebody has read it, that a run ended with its server. */
export function BrokenRun(): preact.JSX.Element | null {
  const run = broken.value;
  return run === null ? null : (
    <div class="alarm banner row" role="alert" data-test="broken-run">
      <p class="grow long">
        {`The server was started anew, seen at ${timeOfDay(run.at)}: run ${run.id} was broken off, unless ` +
          `somebody stopped it before. It isn't recorded any more: start a new one to go on. ` +
          `"korvaxctl files verify" on its folder tells which of its files were not ended, ` +
          `"korvaxctl files recover" saves what is whole of one.`}
      </p>
      <button type="button" onClick={forgetBroken}>
        I have read it
      </button>
    </div>
  );
}
