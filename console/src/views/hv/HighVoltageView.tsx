import "./hv.css";
import { useRef } from "preact/hooks";
import { parameter, setParameter } from "../../app/route";
import { isAway } from "../../app/reach";
import { blocks, server } from "../../app/state";
import { usePolled } from "../../app/usePolled";
import { ofType } from "../../model/blocks";
import { getReadOnlyNames } from "../../server/hv";
import type { Reading } from "../../server/poll";
import { Confirm } from "../common/Confirm";
import { Freshness } from "../common/Freshness";
import { BoardList } from "./BoardList";
import { type Board, type BoardReading, boardsOf, readBoards } from "./boards";
import { BoardValues } from "./BoardValues";
import { consequencesOf, titleOf } from "./order";
import { type Switching, useSwitching } from "./useSwitching";

// Each reading asks the boards themselves, channel by channel.
const valuesMs = 2_000;
const namesMs = 30_000;

export function HighVoltageView(): preact.JSX.Element {
  const known = blocks.value.value;
  if (known === null) {
    return <p class="faint">{blocks.value.fault ?? "Waiting for the list of blocks …"}</p>;
  }
  const boards = boardsOf(ofType(known, "hv"));
  if (boards.length === 0) {
    return (
      <p class="panel" data-test="hv-none">
        No board's high voltage can be seen: put a block of type "hv" with the board's name as its "source" into
        the configuration's "processing", and start the server anew.
      </p>
    );
  }
  return <Boards key={boards.map((board) => board.path).join("\n")} boards={boards} />;
}

function Boards(props: { boards: readonly Board[] }): preact.JSX.Element {
  const { boards } = props;
  const switching = useSwitching();
  const paths = boards.map((board) => board.path).join("\n");
  const reading = usePolled(() => readBoards(server, boards), valuesMs, [paths, switching.done ?? ""]);
  const readings = useKeptReadings(reading);
  const chosen = boards.find((board) => board.path === parameter("board")) ?? boards[0]!;
  const readOnly = usePolled(() => getReadOnlyNames(server, chosen.path), namesMs, [chosen.path]);
  const answer = readings?.find((one) => one.board.path === chosen.path)?.answer ?? null;
  return (
    <div class="stack">
      <section class="panel stack">
        <BoardList
          readings={readings ?? boards.map((board) => ({ board, answer: null, fault: null }))}
          chosen={chosen.path}
          onChoose={(path) => setParameter("board", path)}
          propose={switching.propose}
          isOnDisabled={switching.action.isRunning}
        />
        <ForAll boards={boards} switching={switching} />
        <Freshness reading={reading} intervalMs={valuesMs} />
      </section>
      <section class="panel stack" data-test="hv-values">
        <h2>{chosen.name}</h2>
        {readOnly.fault !== null && !isAway.value && (
          <p class="warn">{`Which values are read-only isn't known. ${readOnly.fault}`}</p>
        )}
        {answer !== null && <BoardValues answer={answer} readOnly={readOnly.value} />}
      </section>
      {switching.pending !== null && (
        <Confirm
          title={titleOf(switching.pending)}
          text={consequencesOf(switching.pending)}
          action={`Switch ${switching.pending.on ? "on" : "off"}`}
          onConfirm={switching.confirm}
          onCancel={() => switching.propose(null)}
        />
      )}
    </div>
  );
}

/** What was read before stays until the first reading after a switch. */
function useKeptReadings(reading: Reading<readonly BoardReading[]>): readonly BoardReading[] | null {
  const kept = useRef<readonly BoardReading[] | null>(null);
  kept.current = reading.fault !== null ? reading.value : (reading.value ?? kept.current);
  return kept.current;
}

function ForAll(props: { boards: readonly Board[]; switching: Switching }): preact.JSX.Element {
  const { boards, switching } = props;
  const { isRunning, fault } = switching.action;
  const order = (on: boolean) => () => switching.propose({ on, boards, isForAll: true });
  return (
    <div class="row">
      <span>All boards:</span>
      <button type="button" class="danger" disabled={isRunning} onClick={order(true)} data-test="hv-all-on">
        All on …
      </button>
      <button type="button" onClick={order(false)} data-test="hv-all-off">
        All off …
      </button>
      {isRunning && <span class="faint">Switching …</span>}
      {fault !== null && <span class="alarm" role="alert" data-test="hv-fault">{fault}</span>}
      {switching.done !== null && <span role="status" data-test="hv-done">{switching.done}</span>}
    </div>
  );
}
