import { useEffect, useState } from "preact/hooks";
import { type Calibration, calibrationOf, inBins, isCalibration } from "../../analysis/calibration";
import type { HistogramKind } from "./kinds";
import { useNumber } from "./useNumber";

interface Props {
  kind: HistogramKind;
  blockName: string;
  calibration: Calibration;
  /** Null goes back to what the block's own axis is. */
  onChange: (calibration: Calibration | null) => void;
}

/** A linear calibration of a block: entered as gain and offset, or by two points. */
export function CalibrationPanel({ kind, blockName, calibration, onChange }: Props): preact.JSX.Element {
  const isEntered = kind.units.includes(calibration.unit);
  const [unit, setUnit] = useState(kind.units[0]!);
  useEffect(() => setUnit(isEntered ? calibration.unit : kind.units[0]!), [calibration.unit]);
  return (
    <details class="calibration">
      <summary>{`Calibration of ${blockName}: ${calibrationText(calibration)}`}</summary>
      <label>
        Unit{" "}
        <select value={unit} onChange={(event) => setUnit(event.currentTarget.value)}>
          {kind.units.map((known) => <option key={known}>{known}</option>)}
        </select>
      </label>
      <GainFields unit={unit} calibration={isEntered ? calibration : null} onChange={onChange} />
      <PointFields unit={unit} onChange={onChange} />
      <button type="button" disabled={!isEntered} onClick={() => onChange(null)}>Forget the calibration</button>
    </details>
  );
}

export function calibrationText({ gain, offset, unit }: Calibration): string {
  const sign = offset < 0 ? "−" : "+";
  const rest = offset === 0 ? "" : ` ${sign} ${Number(Math.abs(offset).toPrecision(6))}`;
  return unit === inBins.unit ? "none" : `${Number(gain.toPrecision(6))} ${unit} × bin${rest}`;
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
