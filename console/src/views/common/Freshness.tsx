import { timeOfDay } from "../../base/format";
import { ageOf, isAway, isOverdue } from "../../app/reach";
import type { Reading } from "../../server/poll";

/** A reading that is older than so many of its intervals is stale. */
const staleIntervals = 4;

/**
 * How old what is shown is, in red when it isn't kept up; `intervalMs` is how often it is asked for. That the
 * server is away is said once, by the banner.
 */
export function Freshness(props: { reading: Reading<unknown>; intervalMs: number }): preact.JSX.Element {
  const { reading, intervalMs } = props;
  const seconds = Math.round(ageOf(reading) / 1000);
  if (isAway.value) {
    const known = `as of ${timeOfDay(reading.at)}, ${seconds} s ago`;
    const age = reading.value === null ? "Nothing was read yet." : known;
    return <p class="warn" data-test="age">{age}</p>;
  }
  if (reading.fault !== null) {
    const shown = reading.value === null ? "" : ` Shown is what was at ${timeOfDay(reading.at)}.`;
    return <p class="alarm" role="alert" data-test="fault">{`${reading.fault}${shown}`}</p>;
  }
  if (reading.value === null) {
    return <p class="faint">Waiting for the first answer …</p>;
  }
  if (isOverdue(reading, staleIntervals * intervalMs + 2_000)) {
    const since = `No answer for ${seconds} s`;
    return <p class="alarm" role="alert">{`${since}: shown is what was at ${timeOfDay(reading.at)}.`}</p>;
  }
  return <p class="faint">{`as of ${timeOfDay(reading.at)}`}</p>;
}
