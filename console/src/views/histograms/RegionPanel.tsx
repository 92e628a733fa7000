import { useState } from "preact/hooks";
import { binOf, type Calibration, positionOf } from "../../analysis/calibration";
import { leastBins, type Range, rangeWithin } from "../../analysis/region";
import type { AxisControl } from "./axisControl";
import { positionText } from "./display";
import { RegionFigures } from "./RegionFigures";
import { mostRegions, type Region } from "./store";
import type { FitReading } from "./useFit";
import { useNumber } from "./useNumber";

interface Props {
  counts: ArrayLike<number>;
  axis: Calibration;
  /** Of positions that are entered for known lines. */
  unit: string;
  regions: readonly Region[];
  selected: number;
  reading: FitReading;
  advice: string;
  fault: string | null;
  /** None of curves that come from a file. */
  control: AxisControl | null;
  onSelect: (index: number) => void;
  onAdd: (range: Range) => void;
  onRemove: (index: number) => void;
  onMarkClearest: () => void;
}

/** The regions of the analysed curve, and what is in the selected one. */
export function RegionPanel(props: Props): preact.JSX.Element {
  const { counts, axis, regions, selected, reading } = props;
  const region = regions[selected];
  return (
    <section class="panel stack regions" aria-label="Regions">
      <h2>Regions</h2>
      {props.advice !== "" && <p class="advice" data-test="advice">{props.advice}</p>}
      <button
        type="button"
        class={regions.length === 0 ? "main" : ""}
        title="Key m: of what is looked at"
        data-test="mark-clearest"
        disabled={regions.length >= mostRegions}
        onClick={props.onMarkClearest}
      >
        Mark the clearest peak
      </button>
      {props.fault !== null && <p class="warn" role="alert">{props.fault}</p>}
      <RegionList {...props} />
      {region !== undefined && region.to >= counts.length && (
        <p class="warn">This region lies beyond the last bin.</p>
      )}
      {region !== undefined && region.to < counts.length && (
        <RegionFigures counts={counts} range={region} axis={axis} reading={reading} />
      )}
      {region !== undefined && props.control !== null && (
        <KnownLineField key={`${region.from} ${region.to}`} {...props} control={props.control} region={region} />
      )}
      <RangeFields {...props} />
    </section>
  );
}

function RegionList({ regions, selected, axis, onSelect, onRemove }: Props): preact.JSX.Element {
  return (
    <ul class="regionlist" data-test="regions">
      {regions.map((region, i) => (
        <li key={`${region.from} ${region.to}`} class="row">
          <button type="button" class="grow" aria-pressed={i === selected} onClick={() => onSelect(i)}>
            {`R${i + 1}: ${rangeText(region, axis)}`}
          </button>
          <button
            type="button"
            class="quiet"
            aria-label={`Remove region ${i + 1}`}
            data-test="remove-region"
            onClick={() => onRemove(i)}
          >
            ✕
          </button>
        </li>
      ))}
    </ul>
  );
}

function rangeText({ from, to }: Range, axis: Calibration): string {
  const [low, high] = [positionText(positionOf(from, axis), axis), positionText(positionOf(to, axis), axis)];
  return `${low.replace(` ${axis.unit}`, "")} – ${high.replace(`${axis.unit} `, "")}`;
}

/** Marks a region without the mouse. */
function RangeFields({ axis, counts, regions, onAdd }: Props): preact.JSX.Element {
  const [from, to] = [useNumber("From", null, "from"), useNumber("to", null, "to")];
  const range = rangeWithin(binOf(from.value, axis), binOf(to.value, axis), counts.length);
  const isEntered = Number.isFinite(from.value + to.value);
  const add = (event: Event): void => {
    event.preventDefault();
    if (range !== null) {
      onAdd(range);
      from.set(null);
      to.set(null);
    }
  };
  return (
    <form class="row" onSubmit={add}>
      {from.field}
      {to.field}
      <span>{axis.unit}</span>
      <button
        type="submit"
        data-test="add-region"
        disabled={range === null || regions.length >= mostRegions}
      >
        Mark
      </button>
      {isEntered && range === null && (
        <p class="warn">{`A region takes at least ${leastBins} bins of the axis.`}</p>
      )}
      {regions.length >= mostRegions && (
        <p class="warn">{`There are ${mostRegions} regions: remove one first.`}</p>
      )}
    </form>
  );
}

const notRising = "No rising axis goes through the known lines: check the numbers, or remove a line below.";

type KnownLineProps = Pick<Props, "unit" | "reading"> & { control: AxisControl; region: Region };

/** Makes a calibration of lines that the operator knows. */
function KnownLineField({ control, region, unit, reading }: KnownLineProps): preact.JSX.Element {
  const known = control.lines.find(({ bin }) => bin >= region.from && bin <= region.to);
  const position = useNumber("This line is at", known?.position ?? null, "known");
  const [fault, setFault] = useState("");
  const calibrate = (event: Event): void => {
    event.preventDefault();
    const isDone = control.addLine({ bin: reading.fit!.mean, position: position.value, unit }, region);
    setFault(isDone ? "" : notRising);
  };
  return (
    <form class="row" onSubmit={calibrate}>
      {position.field}
      <span>{unit}</span>
      <button
        type="submit"
        data-test="calibrate"
        disabled={reading.fit === null || !Number.isFinite(position.value)}
      >
        Calibrate
      </button>
      {fault !== "" && <p class="alarm" role="alert">{fault}</p>}
    </form>
  );
}
