import { timeOfDay } from "../base/format";
import { ageOf, isKeptUp } from "./reach";
import { account, blocks } from "./state";

/** Says in red when what is shown is no longer what is: nothing of an old page may look alive. */
export function Connection(): preact.JSX.Element | null {
  const reading = account.value;
  if (reading.fault === null && blocks.value.fault !== null) {
    return <p class="alarm banner" role="alert">{`What the server runs isn't known. ${blocks.value.fault}`}</p>;
  }
  if (reading.fault === null && (reading.value === null || isKeptUp(reading))) {
    return null;
  }
  const since =
    reading.value === null
      ? "Nothing was read yet."
      : `All that is shown is of ${timeOfDay(reading.at)}, ${Math.round(ageOf(reading) / 1000)} s ago.`;
  return (
    <p class="alarm banner" role="alert" data-test="unreachable">
      {`${reading.fault ?? "The server doesn't answer."} ${since} Trying again.`}
    </p>
  );
}
