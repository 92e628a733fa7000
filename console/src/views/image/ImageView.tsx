import { parameter, setParameter } from "../../app/route";
import { server } from "../../app/state";
import { cellAxis } from "../../charts/heat/heatAxis";
import type { Block } from "../../model/blocks";
import { getCounts2d } from "../../server/queries";
import { BlockChooser, chosenBlock, NoBlock } from "../common/BlockChooser";
import { Choice } from "../common/Choice";
import { useFreeze } from "../common/useFreeze";
import { useKeys } from "../common/useKeys";
import { shapeFault } from "../maps/mapFault";
import { MapPanel } from "../maps/MapPanel";
import { intervalOf } from "../maps/mapSettings";

type Source = "cumulative" | "immediate";
const chosenSource = (): Source => (parameter("show") === "immediate" ? "immediate" : "cumulative");
const options = [["cumulative", "Cumulative"], ["immediate", "Immediate"]] as const;
const columnsKey = "x_positions";
const xAxis = cellAxis("column");
const yAxis = cellAxis("row");

export function ImageView(): preact.JSX.Element {
  const block = chosenBlock("image");
  if (block === null) {
    return <NoBlock type="image" example='with "x_positions" for its columns and "y_positions" for its rows' />;
  }
  const source = chosenSource();
  return <OneImage key={`${source} ${block.path}`} block={block} source={source} />;
}

const notes: Record<Source, string> = {
  cumulative: "All that was counted since the last reset.",
  immediate:
    "What was counted since this was last asked. Asking empties it: what one page shows, another page or " +
    "program never gets. Reset leaves it alone.",
};

function OneImage({ block, source }: { block: Block; source: Source }): preact.JSX.Element {
  const fault = shapeFault(block, columnsKey);
  const freezable = useFreeze(
    fault === null ? () => getCounts2d(server, block.path, source) : null,
    intervalOf(parameter("every")),
  );
  const choose = (next: Source): void => setParameter("show", next === "cumulative" ? null : next);
  useKeys({ m: () => choose(source === "cumulative" ? "immediate" : "cumulative") });
  const map = freezable.reading.value;
  return (
    <MapPanel
      block={block}
      source={source}
      noun="Counts"
      freezable={freezable}
      subject={map && { map, points: null, xAxis, yAxis, startsAtBottom: false, isSquare: true }}
      fault={fault}
      columnsKey={columnsKey}
      readOut={({ row, column }, count) => `row ${row}, column ${column}, counts: ${count}`}
      choices={
        <>
          <BlockChooser chosen={block} forget={["at"]} />
          <Choice label="Image" chosen={source} options={options} onChoose={choose} shortcut="m" />
        </>
      }
      notes={<p class="notes" data-test="note">{notes[source]}</p>}
    />
  );
}
