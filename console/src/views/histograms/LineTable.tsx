import type { Calibration } from "../../analysis/calibration";
import type { AxisControl } from "./axisControl";
import { type KnownLine, residualOf } from "./knownLines";

/** The lines that the operator told, and how well the axis goes through each. */
export function LineTable({ control, axis }: { control: AxisControl; axis: Calibration }): preact.JSX.Element {
  return (
    <table class="curves" data-test="lines">
      <thead>
        <tr>
          <th>Known line</th>
          <th class="number">Bin</th>
          <th class="number" title="Where it belongs, less where the axis has it">Off by</th>
          <th />
        </tr>
      </thead>
      <tbody>
        {control.lines.map((line) => (
          <tr key={line.bin}>
            <td>{nameOf(line)}</td>
            <td class="number">{line.bin.toFixed(2)}</td>
            <td class="number" data-test="residual">{residualText(line, axis)}</td>
            <td>
              <button
                type="button"
                class="quiet"
                aria-label={`Remove the line at ${nameOf(line)}`}
                onClick={() => control.removeLine(line)}
              >
                ✕
              </button>
            </td>
          </tr>
        ))}
      </tbody>
    </table>
  );
}

function nameOf({ position, unit }: KnownLine): string {
  return `${position} ${unit}`;
}

/** To a hundredth of a bin. */
function residualText(line: KnownLine, axis: Calibration): string {
  const residual = residualOf(line, axis);
  const digits = Math.min(9, Math.max(0, 2 - Math.floor(Math.log10(axis.gain))));
  const text = residual === null ? "–" : residual.toFixed(digits);
  return /^-0\.?0*$/.test(text) ? text.slice(1) : text.replace("-", "−");
}
