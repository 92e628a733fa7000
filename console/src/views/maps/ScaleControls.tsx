import { colourTables } from "../../charts/colourTables";
import { parameter, setParameter } from "../../app/route";
import { Choice } from "../common/Choice";
import { NumberInput } from "../common/NumberInput";
import { fixedScaleOf, tableNamed } from "./mapSettings";

export const isLogChosen = (): boolean => parameter("z") !== "lin";
export const toggleLog = (): void => setParameter("z", isLogChosen() ? "lin" : null);

/** The scale that would be without fixed ends. */
interface Automatic {
  low: number;
  high: number;
}

/** How counts become colours. */
export function ScaleControls({ automatic }: { automatic: Automatic }): preact.JSX.Element {
  const table = tableNamed(parameter("colours"));
  const stripe = `linear-gradient(to right, ${table.css.filter((_, i) => i % 15 === 0).join(", ")})`;
  return (
    <fieldset>
      <legend>Colours</legend>
      <div class="row">
        <select
          aria-label="Colour table"
          value={table.name}
          onChange={(event) => setParameter("colours", event.currentTarget.value)}
          data-test="colours"
        >
          {colourTables.map(({ name, text }) => (
            <option value={name}>{text}</option>
          ))}
        </select>
        <Choice
          label="Scale"
          chosen={isLogChosen() ? "log" : "lin"}
          options={[["log", "log"], ["lin", "linear"]]}
          onChoose={(z) => setParameter("z", z === "lin" ? z : null)}
          shortcut="l"
        />
      </div>
      <div class="colours" style={{ background: stripe }} />
      <RangeFields automatic={automatic} />
    </fieldset>
  );
}

function RangeFields({ automatic }: { automatic: Automatic }): preact.JSX.Element {
  const fixed = fixedScaleOf(parameter("range"));
  const { low, high } = fixed ?? automatic;
  const set = (from: string, to: string): void => setParameter("range", `${from}_${to}`);
  const toggle = (): void => (fixed === null ? set(textOf(low), textOf(high)) : setParameter("range", null));
  const isDisabled = fixed === null;
  return (
    <>
      <label class="row">
        <input type="checkbox" checked={isDisabled} onChange={toggle} data-test="automatic" />
        Automatic, by the counts shown
      </label>
      <EndField name="Minimum" value={low} isDisabled={isDisabled} onChange={(text) => set(text, textOf(high))} />
      <EndField name="Maximum" value={high} isDisabled={isDisabled} onChange={(text) => set(textOf(low), text)} />
      {fixed !== null && fixed.fault !== null && (
        <p class="alarm" role="alert" data-test="scale-fault">
          {`${fixed.fault} Until then the scale is automatic.`}
        </p>
      )}
    </>
  );
}

interface EndFieldProps {
  name: string;
  value: number;
  isDisabled: boolean;
  onChange: (text: string) => void;
}

function EndField({ name, value, isDisabled, onChange }: EndFieldProps): preact.JSX.Element {
  return (
    <label class="row end">
      {name}
      <NumberInput
        min="0"
        disabled={isDisabled}
        value={textOf(value)}
        onEnter={onChange}
        data-test={name.toLowerCase()}
      />
    </label>
  );
}

function textOf(value: number): string {
  return Number.isFinite(value) ? String(value) : "";
}
