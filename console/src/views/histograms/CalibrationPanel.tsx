import { useEffect, useState } from "preact/hooks";
import { type Calibration, calibrationOf, inBins, isCalibration } from "../../analysis/calibration";
import type { Block } from "../../model/blocks";
import type { AxisControl } from "./axisControl";
import { channelOf } from "./curveKey";
import type { HistogramKind } from "./kinds";
import { LineTable } from "./LineTable";
import { isPositive, storedUnitNs, storeUnitNs } from "./store";
import { useNumber } from "./useNumber";

interface Props {
  kind: HistogramKind;
  block: Block;
  /** Whose axis it is. */
  curve: string;
  axis: Calibration;
  control: AxisControl;
}

/** The linear calibration of a channel: entered as gain and offset, by two points, or by fitted lines. */
export function CalibrationPanel({ kind, block, curve, axis, control }: Props): preact.JSX.Element {
  const [unit, setUnit] = useState(kind.units[0]!);
  useEffect(() => setUnit(kind.units.includes(axis.unit) ? axis.unit : kind.units[0]!), [axis.unit]);
  const owner = control.isShared ? `all channels of ${block.name}` : `${block.name}, channel ${channelOf(curve)}`;
  return (
    <details class="calibration" data-test="calibration">
      <summary>{`Calibration of ${owner}: ${calibrationText(axis)}`}</summary>
      {control.lines.length > 0 && <LineTable control={control} axis={axis} />}
      {kind.hasTimestampUnit(block) && <TimestampUnitField path={block.path} />}
      <label>
        Unit{" "}
        <select value={unit} onChange={(event) => setUnit(event.currentTarget.value)}>
          {kind.units.map((known) => <option key={known}>{known}</option>)}
        </select>
      </label>
      <GainFields unit={unit} calibration={control.entered} onChange={control.set} />
      <PointFields unit={unit} onChange={control.set} />
      <Owners block={block} control={control} />
    </details>
  );
}

export function calibrationText({ gain, offset, unit }: Calibration): string {
  const sign = offset < 0 ? "−" : "+";
  const rest = offset === 0 ? "" : ` ${sign} ${Number(Math.abs(offset).toPrecision(6))}`;
  return unit === inBins.unit ? "none" : `${Number(gain.toPrecision(6))} ${unit} × bin${rest}`;
}

function Owners({ block, control }: { block: Block; control: AxisControl }): preact.JSX.Element {
  const { entered, isShared, share, set } = control;
  return (
    <div class="row">
      <button
        type="button"
        data-test="share"
        title="Channels with a calibration of their own keep it"
        disabled={entered === null || isShared}
        onClick={share}
      >
        Use for all channels of this block
      </button>
      <button type="button" data-test="forget" disabled={entered === null} onClick={() => set(null)}>
        {isShared ? `Forget it for all channels of ${block.name}` : "Forget the calibration"}
      </button>
    </div>
  );
}

/** An axis of timestamps needs no more than the length of their unit. */
function TimestampUnitField({ path }: { path: string }): preact.JSX.Element {
  const ns = useNumber("ns per timestamp unit", storedUnitNs(path), "unit-ns");
  const isGood = ns.isEmpty || isPositive(ns.value);
  const set = (event: Event): void => {
    event.preventDefault();
    storeUnitNs(path, ns.isEmpty ? null : ns.value);
  };
  return (
    <form class="row" onSubmit={set}>
      {ns.field}
      <button type="submit" disabled={!isGood}>Set</button>
      {!isGood && (
        <p class="alarm" role="alert" data-test="unit-fault">
          Enter a number above 0 without its unit, or nothing to forget it.
        </p>
      )}
    </form>
  );
}

interface FieldProps {
  unit: string;
  onChange: (calibration: Calibration) => void;
}

interface GainProps extends FieldProps {
  calibration: Calibration | null;
}

function GainFields({ unit, calibration, onChange }: GainProps): preact.JSX.Element {
  const gain = useNumber(`${unit} per bin`, calibration?.gain ?? null, "gain");
  const offset = useNumber(`${unit} at bin 0`, calibration?.offset ?? 0, "offset");
  const entered = { gain: gain.value, offset: offset.value, unit };
  return (
    <form class="row" onSubmit={(event) => { event.preventDefault(); onChange(entered); }}>
      {gain.field}
      {offset.field}
      <button type="submit" disabled={!isCalibration(entered)}>Set</button>
    </form>
  );
}

function PointFields({ unit, onChange }: FieldProps): preact.JSX.Element {
  const [bin1, at1] = [useNumber("Bin", null), useNumber(`is ${unit}`, null)];
  const [bin2, at2] = [useNumber("Bin", null), useNumber(`is ${unit}`, null)];
  const points = [{ bin: bin1.value, position: at1.value }, { bin: bin2.value, position: at2.value }];
  const found = calibrationOf(points, unit);
  const isFull = points.every(({ bin, position }) => Number.isFinite(bin + position));
  return (
    <form class="row" onSubmit={(event) => { event.preventDefault(); if (found !== null) { onChange(found); } }}>
      {bin1.field}
      {at1.field}
      {bin2.field}
      {at2.field}
      <button type="submit" disabled={found === null}>Set by two points</button>
      {isFull && found === null && <p class="alarm">{`The higher bin must have the higher ${unit}.`}</p>}
    </form>
  );
}
