import { whole } from "../../base/format";
import { account } from "../../app/state";
import { lossesOf } from "../../model/ledger";

/** What all blocks lost since the server's start, or that nothing is lost. */
export function AccountPanel(): preact.JSX.Element | null {
  const read = account.value.value;
  if (read === null) {
    return null;
  }
  const lost = read.ledger.entries.flatMap((entry) =>
    [...lossesOf(entry)].map(([fate, count]) => ({ name: entry.name, fate: fate.replace(/_/g, " "), count })),
  );
  const missing = read.ledger.entries.filter((entry) => entry.missing !== 0);
  return (
    <section class="panel" aria-label="Account of all records">
      <h2>Account of all records</h2>
      {missing.map(({ name, missing: records }, i) => (
        <p class="alarm" key={i}>
          {`${name} misses ${whole(records)} records: please report this fault of the server.`}
        </p>
      ))}
      {lost.length === 0 && <p class="good" data-test="account">Nothing is lost since the server started.</p>}
      {lost.map(({ name, fate, count }, i) => (
        <p class="alarm" data-test="account" key={i}>{`${name}: ${whole(count)} ${fate}`}</p>
      ))}
    </section>
  );
}
