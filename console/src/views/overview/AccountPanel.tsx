import { whole } from "../../base/format";
import { account } from "../../app/state";
import { isKnown, timeOfDayOf } from "../../app/reach";
import { lossOf } from "../../model/loss";

/** What all blocks lost, in red what they lose now, or that nothing is lost. */
export function AccountPanel(): preact.JSX.Element | null {
  const { value: read, heardAt } = account.value;
  if (read === null) {
    return null;
  }
  const { entries } = read.ledger;
  const losses = entries.flatMap((entry, i) => {
    const loss = lossOf(entry, read.flows[i], heardAt, timeOfDayOf);
    return loss === null ? [] : [{ name: entry.name, loss }];
  });
  const isNow = isKnown(account.value);
  const missing = entries.filter((entry) => entry.missing !== 0);
  return (
    <section class="panel" aria-label="Account of all records">
      <h2>Account of all records</h2>
      {missing.map(({ name, missing: records }, i) => (
        <p class="alarm" key={i}>
          {`${name} misses ${whole(records)} records: please report this fault of the server.`}
        </p>
      ))}
      {losses.length === 0 && (
        <p class={isNow ? "good" : "faint"} data-test="account">Nothing is lost since the server started.</p>
      )}
      {losses.map(({ name, loss }, i) => (
        <p class={loss.isNow && isNow ? "alarm" : "warn"} data-test="account" key={i}>
          {`${loss.isNow && isNow ? "⚠ " : ""}${name} lost ${loss.text}`}
        </p>
      ))}
    </section>
  );
}
