import { blocks, server } from "../../app/state";
import { usePolled } from "../../app/usePolled";
import { ofType } from "../../model/blocks";
import { Freshness } from "../common/Freshness";
import { type BoardReading, boardsOf, readBoards } from "../hv/boards";
import { powerWords, summaryOf } from "../hv/summary";

const intervalMs = 5_000; // each reading asks the boards themselves

/** Which boards' high voltage is on; nothing where the configuration has none. */
export function VoltagePanel(): preact.JSX.Element | null {
  const boards = boardsOf(ofType(blocks.value.value ?? [], "hv"));
  const key = boards.map(({ path }) => path).join("\n");
  const reading = usePolled(boards.length === 0 ? null : () => readBoards(server, boards), intervalMs, [key]);
  if (boards.length === 0) {
    return null;
  }
  return (
    <section class="panel" aria-label="High voltage">
      <h2>
        <a href="#/hv">High voltage</a>
      </h2>
      {(reading.value ?? []).map((of) => (
        <Voltage reading={of} key={of.board.path} />
      ))}
      <Freshness reading={reading} intervalMs={intervalMs} />
    </section>
  );
}

function Voltage(props: { reading: BoardReading }): preact.JSX.Element {
  const { board, answer, fault } = props.reading;
  if (answer === null) {
    return <p class="alarm">{`${board.name}: ${fault ?? "no answer"}`}</p>;
  }
  const { power, text } = summaryOf(answer.values);
  return (
    <p class={power === "on" || power === "off" ? "" : "warn"} data-test={`voltage-${board.name}`} title={text}>
      {`${board.name}: ${powerWords[power]}`}
    </p>
  );
}
