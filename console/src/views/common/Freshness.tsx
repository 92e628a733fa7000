import { timeOfDay } from "../../base/format";
import { now } from "../../app/state";
import type { Reading } from "../../server/poll";

/** A reading that is older than so many of its intervals is stale. */
const staleIntervals = 4;

/** How old what is shown is, in red when it isn't kept up; `intervalMs` is how often it is asked for. */
export function Freshness(props: { reading: Reading<unknown>; intervalMs: number }): preact.JSX.Element {
  const { reading, intervalMs } = props;
  const age = now.value - reading.at;
  if (reading.fault !== null) {
    const shown = reading.value === null ? "" : ` Shown is what was at ${timeOfDay(reading.at)}.`;
    return <p class="alarm" role="alert" data-test="fault">{`${reading.fault}${shown}`}</p>;
  }
  if (reading.value === null) {
    return <p class="faint">Waiting for the first answer …</p>;
  }
  if (age > staleIntervals * intervalMs + 2_000 && !document.hidden) {
    const since = `No answer for ${Math.round(age / 1000)} s`;
    return <p class="alarm" role="alert">{`${since}: shown is what was at ${timeOfDay(reading.at)}.`}</p>;
  }
  return <p class="faint">{`as of ${timeOfDay(reading.at)}`}</p>;
}
