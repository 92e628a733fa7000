import type { BoardReading } from "./boards";
import { powerWords, summaryOf } from "./summary";
import type { Order } from "./order";

export interface BoardListProps {
  readings: readonly BoardReading[];
  chosen: string;
  onChoose: (path: string) => void;
  propose: (order: Order) => void;
  /** "Off" can be pressed at any time. */
  isOnDisabled: boolean;
}

/** The state of every board at a glance, with what switches it. */
export function BoardList(props: BoardListProps): preact.JSX.Element {
  return (
    <table class="boards">
      <thead>
        <tr>
          <th scope="col">Board</th>
          <th scope="col">High voltage</th>
          <th scope="col">Switch</th>
        </tr>
      </thead>
      <tbody>
        {props.readings.map((reading) => (
          <BoardRow key={reading.board.path} reading={reading} {...props} />
        ))}
      </tbody>
    </table>
  );
}

function BoardRow(props: BoardListProps & { reading: BoardReading }): preact.JSX.Element {
  const { reading, chosen, onChoose, propose, isOnDisabled } = props;
  const { board } = reading;
  const order = (on: boolean) => () => propose({ on, boards: [board], isForAll: false });
  return (
    <tr data-test={`hv-board-${board.name}`}>
      <th scope="row">
        <button type="button" aria-pressed={board.path === chosen} onClick={() => onChoose(board.path)}>
          {board.name}
        </button>
      </th>
      <td>
        <BoardState reading={reading} />
      </td>
      <td>
        <div class="row">
          <SwitchButton name={board.name} on={true} disabled={isOnDisabled} onClick={order(true)} />
          <SwitchButton name={board.name} on={false} disabled={false} onClick={order(false)} />
        </div>
      </td>
    </tr>
  );
}

function SwitchButton(props: {
  name: string;
  on: boolean;
  disabled: boolean;
  onClick: () => void;
}): preact.JSX.Element {
  const { name, on, disabled, onClick } = props;
  const test = `hv-${on ? "on" : "off"}-${name}`;
  return (
    <button type="button" class={on ? "danger" : ""} disabled={disabled} onClick={onClick} data-test={test}>
      {on ? "On …" : "Off …"}
    </button>
  );
}

const noSummary = "no parameter with “state”, “status”, “voltage” or “vmon” in its name";

function BoardState(props: { reading: BoardReading }): preact.JSX.Element {
  const { answer, fault } = props.reading;
  if (answer === null) {
    return fault === null ? <span class="faint">not known</span> : <span class="alarm">{fault}</span>;
  }
  const { power, text } = summaryOf(answer.values);
  return (
    <>
      <span class={`power ${power}`}>{powerWords[power]}</span>{" "}
      <span data-test="hv-state">{text === "" ? noSummary : text}</span>
    </>
  );
}
