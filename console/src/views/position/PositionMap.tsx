import type { ComponentChildren } from "preact";
import { parameter } from "../../app/route";
import { server } from "../../app/state";
import type { Cell } from "../../charts/heat/heatArea";
import { cellAxis } from "../../charts/heat/heatAxis";
import type { Block } from "../../model/blocks";
import { getCounts2d } from "../../server/queries";
import { shapeFault } from "../maps/mapFault";
import { MapPanel } from "../maps/MapPanel";
import { intervalOf } from "../maps/mapSettings";
import { useFreeze } from "../common/useFreeze";

export const columnsKey = "positions";
const xAxis = cellAxis("column");
const yAxis = cellAxis("row");

export function PositionMap(props: { block: Block; choices: ComponentChildren }): preact.JSX.Element {
  const { block, choices } = props;
  const fault = shapeFault(block, columnsKey);
  const freezable = useFreeze(
    fault === null ? () => getCounts2d(server, block.path, "heatmap") : null,
    intervalOf(parameter("every")),
  );
  const map = freezable.reading.value;
  const readOut = ({ row, column }: Cell, count: string): string => {
    const share = (row / (map?.rows ?? 1)).toFixed(3);
    return `column ${column}, row ${row} (share of energy about ${share}), counts: ${count}`;
  };
  return (
    <MapPanel
      block={block}
      source="heatmap"
      noun="Counts"
      freezable={freezable}
      subject={map && { map, points: null, xAxis, yAxis, startsAtBottom: true, isSquare: false }}
      fault={fault}
      columnsKey={columnsKey}
      readOut={readOut}
      choices={choices}
      notes={
        <p class="notes" data-test="note">
          A column is a pair of strips; a row is a share of the pair's energy, from 0 to 1 over all rows.
        </p>
      }
    />
  );
}
