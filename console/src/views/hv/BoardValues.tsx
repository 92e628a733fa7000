import type { BoardAnswer } from "../../server/tolerantValues";
import { tableOf } from "./boardTable";

/** All values of a board: a row per channel, a column per parameter, and apart those of the whole board. */
export function BoardValues(props: {
  answer: BoardAnswer;
  /** The names of those that can't be written; null when that isn't known. */
  readOnly: ReadonlySet<string> | null;
}): preact.JSX.Element {
  const { answer, readOnly } = props;
  const table = tableOf(answer.values, readOnly ?? new Set());
  const access = (isReadOnly: boolean): string => (readOnly === null ? "" : isReadOnly ? "read-only" : "writable");
  return (
    <>
      <Complaints texts={answer.complaints} />
      {answer.values.length === 0 && answer.complaints.length === 0 && (
        <p>The board has no parameters: list them under "configs" of its entry in "Hardware".</p>
      )}
      {table.boardWide.length > 0 && (
        <table class="board-wide" data-test="hv-board-wide">
          <caption>Of the whole board</caption>
          <tbody>
            {table.boardWide.map(({ name, value, isReadOnly }) => (
              <tr>
                <th scope="row">{name}</th>
                <td class="number">{value === "" ? "–" : value}</td>
                <td class="faint">{access(isReadOnly)}</td>
              </tr>
            ))}
          </tbody>
        </table>
      )}
      {table.columns.length > 0 && table.channels === 0 && (
        <p class="warn">
          No channel is read: set "n_channels" of the hv block to the number of the board's channels.
        </p>
      )}
      {table.columns.length > 0 && table.channels > 0 && <ChannelTable table={table} access={access} />}
      {table.hidden > 0 && <p class="warn">{`${table.hidden} more values aren't shown.`}</p>}
    </>
  );
}

function ChannelTable(props: {
  table: ReturnType<typeof tableOf>;
  access: (isReadOnly: boolean) => string;
}): preact.JSX.Element {
  const { table, access } = props;
  return (
    <div class="scroll" tabIndex={0} role="region" aria-label="Values by channel">
      <table data-test="hv-channels">
        <caption>By channel</caption>
        <thead>
          <tr>
            <th scope="col">Channel</th>
            {table.columns.map(({ name, isReadOnly }) => (
              <th scope="col" class="number">
                {name}
                <small class="faint">{access(isReadOnly)}</small>
              </th>
            ))}
          </tr>
        </thead>
        <tbody>
          {Array.from({ length: table.channels }, (_, channel) => (
            <tr>
              <th scope="row">{channel}</th>
              {table.columns.map(({ values }) => (
                <td class="number">{values[channel] || "–"}</td>
              ))}
            </tr>
          ))}
        </tbody>
      </table>
    </div>
  );
}

const mostComplaints = 5;

function Complaints(props: { texts: readonly string[] }): preact.JSX.Element | null {
  const { texts } = props;
  if (texts.length === 0) {
    return null;
  }
  const more = texts.length > mostComplaints ? ` And ${texts.length - mostComplaints} more such.` : "";
  return (
    <p class="alarm" role="alert" data-test="hv-complaints">
      {`Not everything the board gave could be read. ${texts.slice(0, mostComplaints).join(" ")}${more}`}
    </p>
  );
}
