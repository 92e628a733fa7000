import type { ComponentChildren } from "preact";
import { useMemo, useRef, useState } from "preact/hooks";
import { whole } from "../../base/format";
import { parameter } from "../../app/route";
import { server } from "../../app/state";
import type { Cell } from "../../charts/heat/heatArea";
import { cellAxis } from "../../charts/heat/heatAxis";
import { type Block, sizeOf } from "../../model/blocks";
import type { PointCloud } from "../../model/data";
import { getScatter } from "../../server/queries";
import { shapeFault } from "../maps/mapFault";
import { MapPanel } from "../maps/MapPanel";
import { intervalOf } from "../maps/mapSettings";
import { columnsOf, countsOfPoints, noPoints, withNew } from "../maps/points";
import { type Freezable, useFreeze } from "../common/useFreeze";
import { useKeys } from "../common/useKeys";
import type { MapSubject } from "../maps/usePicture";
import { columnsKey } from "./PositionMap";

const keptPoints = 20_000;

export function PositionScatter(props: { block: Block; choices: ComponentChildren }): preact.JSX.Element {
  const { block, choices } = props;
  const fault = shapeFault(block, columnsKey);
  const { freezable, points, clear } = usePoints(block, fault === null);
  const isKnown = freezable.reading.value !== null;
  const subject = useMemo(() => (isKnown ? subjectOf(block, points) : null), [isKnown, block, points]);
  useKeys({ c: clear });
  const share = (row: number): string => (row / (subject?.map.rows ?? 1)).toFixed(3);
  const readOut = ({ row, column }: Cell, count: string): string =>
    `column ${column}, share of energy ${share(row)} to ${share(row + 1)}, points: ${count}`;
  return (
    <MapPanel
      block={block}
      source="scatter"
      noun="Points"
      freezable={freezable}
      subject={subject}
      fault={fault}
      columnsKey={columnsKey}
      readOut={readOut}
      choices={choices}
      notes={<ScatterNotes onClear={clear} />}
    />
  );
}

function ScatterNotes({ onClear }: { onClear: () => void }): preact.JSX.Element {
  return (
    <>
      <button type="button" onClick={onClear} title="Key c" data-test="clear">
        Clear the points
      </button>
      <p class="notes" data-test="note">
        {`The latest ${whole(keptPoints)} points that this page was given. `}
        Each is given once: what another page or program has, this one never gets. The server keeps those of about
        a hundred events between two questions, so their number tells no rate. Points are spread over the width of
        their column.
      </p>
    </>
  );
}

interface Points {
  freezable: Freezable<PointCloud>;
  points: PointCloud;
  clear: () => void;
}

/** Collects what is answered. An answer that comes too late for a frozen picture is shown after it. */
function usePoints(block: Block, isAsked: boolean): Points {
  const collected = useRef<PointCloud>(noPoints);
  const [cleared, setCleared] = useState<PointCloud | null>(null);
  const ask = async (): Promise<PointCloud> => {
    const more = await getScatter(server, block.path);
    // What was collected may have been cleared meanwhile.
    return (collected.current = withNew(collected.current, more, keptPoints));
  };
  const freezable = useFreeze(isAsked ? ask : null, intervalOf(parameter("every")));
  const shown = freezable.reading.value;
  const clear = (): void => {
    collected.current = noPoints;
    setCleared(shown);
  };
  return { freezable, points: shown === null || shown === cleared ? noPoints : shown, clear };
}

// A configuration can name far more cells than a screen has.
const mostRows = 1024;
const mostColumns = 4096;
const rowsWithoutShape = 64;

function subjectOf(block: Block, points: PointCloud): MapSubject {
  const rows = Math.min(sizeOf(block, "rows") || rowsWithoutShape, mostRows);
  const columns = Math.min(sizeOf(block, "columns") || Math.max(1, columnsOf(points)), mostColumns);
  return {
    map: countsOfPoints(points, rows, columns),
    points,
    xAxis: cellAxis("column"),
    yAxis: { label: "share of energy", cellsPerUnit: rows, zero: 0 },
    startsAtBottom: true,
    isSquare: false,
  };
}
