import "./maps.css";
import type { ComponentChildren } from "preact";
import { useRef } from "preact/hooks";
import { short, timeOfDay, whole } from "../../base/format";
import { parameter } from "../../app/route";
import { type Cell, countAt } from "../../charts/heat/heatArea";
import { HeatChart } from "../../charts/heat/HeatChart";
import { automaticScale } from "../../charts/heat/heatScale";
import type { Block } from "../../model/blocks";
import { CountingControls } from "../common/CountingControls";
import { Freshness } from "../common/Freshness";
import type { Freezable } from "../common/useFreeze";
import { useKeys } from "../common/useKeys";
import { emptyFault } from "./mapFault";
import { MapFigures } from "./MapFigures";
import { intervalOf } from "./mapSettings";
import { PictureControls } from "./PictureControls";
import { SaveButtons } from "./SaveButtons";
import { ScaleControls, toggleLog } from "./ScaleControls";
import { type MapSubject, usePicture } from "./usePicture";

export interface MapPanelProps {
  block: Block;
  /** What of the block is shown: for file names and descriptions. */
  source: string;
  /** What is counted. */
  noun: string;
  freezable: Freezable<unknown>;
  /** Nothing before the first answer. */
  subject: MapSubject | null;
  /** Why there is nothing to ask; null when there is. */
  fault: string | null;
  /** The configuration's key that makes the columns. */
  columnsKey: string;
  readOut: (cell: Cell, count: string) => string;
  /** What stands above the map, and what is said of it. */
  choices: ComponentChildren;
  notes: ComponentChildren;
}

/** A map with all that is chosen and said of it. */
export function MapPanel(props: MapPanelProps): preact.JSX.Element {
  const { subject, freezable, block } = props;
  useKeys({ f: freezable.toggle, l: toggleLog });
  const fault = props.fault ?? (subject && emptyFault(subject.map, props.columnsKey));
  return (
    <div class="stack maps">
      <div class="row">
        {props.choices}
        <CountingControls paths={[block.path]} />
        <FreezeButton freezable={freezable} />
      </div>
      <State freezable={freezable} fault={fault} />
      {subject !== null && fault === null && <MapWithFigures {...props} subject={subject} />}
    </div>
  );
}

function FreezeButton({ freezable }: { freezable: Freezable<unknown> }): preact.JSX.Element {
  const { isFrozen, toggle } = freezable;
  return (
    <button type="button" aria-pressed={isFrozen} onClick={toggle} title="Key f" data-test="freeze">
      Freeze
    </button>
  );
}

function State(props: { freezable: Freezable<unknown>; fault: string | null }): preact.JSX.Element {
  const { reading, isFrozen } = props.freezable;
  if (props.fault !== null) {
    return (
      <p class="alarm" role="alert" data-test="fault">
        {props.fault}
      </p>
    );
  }
  if (isFrozen && reading.value !== null) {
    return <p class="warn" data-test="frozen">{`Frozen: shown is what was at ${timeOfDay(reading.at)}.`}</p>;
  }
  return <Freshness reading={reading} intervalMs={intervalOf(parameter("every"))} />;
}

function MapWithFigures(props: MapPanelProps & { subject: MapSubject }): preact.JSX.Element {
  const { subject, block, source, noun } = props;
  const [picture, setWindow] = usePicture(subject);
  const canvas = useRef<HTMLCanvasElement | null>(null);
  const { map, summary, points } = picture;
  const size = `${map.rows} rows, ${map.columns} columns`;
  return (
    <div class="split grow">
      <div class="panel stack">
        <HeatChart
          picture={picture}
          onWindow={setWindow}
          onCanvas={(made) => (canvas.current = made)}
          readOut={(cell) => props.readOut(cell, whole(countAt(map, cell)))}
          description={`${source} of ${block.name}: ${size}, ${noun} shown: ${short(summary.total)}`}
        />
      </div>
      <div class="panel stack scroll">
        <MapFigures map={map} shown={summary} noun={noun} isCells={points === null} />
        {points === null && <ScaleControls automatic={automaticScale(summary, picture.scale.isLog)} />}
        <PictureControls startsAtBottom={subject.startsAtBottom} />
        <SaveButtons picture={picture} canvas={() => canvas.current} name={`${block.name}_${source}`} />
        {props.notes}
      </div>
    </div>
  );
}
