import { curveColour } from "../../charts/curves";
import { isDark } from "../../base/theme";
import type { Trace } from "../../server/scope";
import { NumberInput } from "../common/NumberInput";
import { keyOf, labelOf } from "./traces";
import type { Scope } from "./useScope";
import { settingOf } from "./vertical";

export interface TracePanelProps {
  scope: Scope;
  shown: readonly Trace[];
  /** A sample; null when there is none. */
  cursor: number | null;
  selected: string;
  onSelect: (key: string) => void;
}

/** A row per trace: its value at the cursor, and how an analog one stands on the screen. */
export function TracePanel(props: TracePanelProps): preact.JSX.Element {
  return (
    <div class="panel scroll scope-traces">
      <table data-test="scope-traces">
        <thead>
          <tr>
            <th scope="col">Trace</th>
            <th scope="col" class="number">Cursor</th>
            <th scope="col" title="The value in the middle of the screen">Offset</th>
            <th scope="col" title="Values from line to line">Per div.</th>
          </tr>
        </thead>
        <tbody>
          {props.shown.map((trace) => <TraceRow key={keyOf(trace)} trace={trace} {...props} />)}
        </tbody>
      </table>
    </div>
  );
}

function TraceRow(props: TracePanelProps & { trace: Trace }): preact.JSX.Element {
  const { scope, trace, cursor, selected, onSelect } = props;
  const key = keyOf(trace);
  const colour = curveColour(scope.colourOf(trace.channel), isDark.value);
  const swatch = <span class="swatch" style={{ background: colour }} />;
  return (
    <tr data-test={`trace-${key}`}>
      <th scope="row">
        {trace.isDigital ? (
          <>{swatch} {labelOf(trace)}</>
        ) : (
          <label class="touch" title="Selected: drawn thick; the keys and the values beside the lines are its own">
            <input type="radio" name="trace" checked={key === selected} onChange={() => onSelect(key)} />
            {swatch} {labelOf(trace)}
          </label>
        )}
      </th>
      <td class="number" data-test="value">{cursor === null ? "–" : (trace.samples[cursor] ?? "–")}</td>
      {trace.isDigital ? <td colSpan={2} class="faint">digital</td> : <VerticalInputs {...props} traceKey={key} />}
    </tr>
  );
}

function VerticalInputs(props: TracePanelProps & { trace: Trace; traceKey: string }): preact.JSX.Element {
  const { scope, trace, traceKey: key } = props;
  const setting = scope.settings.get(key) ?? {};
  const whole = scope.verticalOf(key);
  const set = (offset: string, perDivision: string): void => scope.set(key, settingOf(offset, perDivision));
  return (
    <>
      <td>
        <NumberInput
          class="short"
          aria-label={`Offset of ${labelOf(trace)}`}
          value={setting.offset ?? ""}
          placeholder={String(whole.offset)}
          onEnter={(text) => set(text, String(setting.perDivision ?? ""))}
          data-test="offset"
        />
      </td>
      <td>
        <NumberInput
          class="short"
          min="0"
          aria-label={`Values per division of ${labelOf(trace)}`}
          value={setting.perDivision ?? ""}
          placeholder={String(whole.perDivision)}
          onEnter={(text) => set(String(setting.offset ?? ""), text)}
          data-test="scale"
        />
      </td>
    </>
  );
}
