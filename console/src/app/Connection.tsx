import { timeOfDay } from "../base/format";
import { account, blocks, now } from "./state";

const patienceMs = 5_000;

/** Says in red when what is shown is no longer what is: nothing of an old page may look alive. */
export function Connection(): preact.JSX.Element | null {
  const reading = account.value;
  const age = now.value - reading.at;
  if (reading.fault === null && blocks.value.fault !== null) {
    return <p class="alarm banner" role="alert">{`What the server runs isn't known. ${blocks.value.fault}`}</p>;
  }
  if (reading.fault === null && (reading.value === null || age < patienceMs || document.hidden)) {
    return null;
  }
  const since =
    reading.value === null
      ? "Nothing was read yet."
      : `All that is shown is of ${timeOfDay(reading.at)}, ${Math.round(age / 1000)} s ago.`;
  return (
    <p class="alarm banner" role="alert" data-test="unreachable">
      {`${reading.fault ?? "The server doesn't answer."} ${since} Trying again.`}
    </p>
  );
}
