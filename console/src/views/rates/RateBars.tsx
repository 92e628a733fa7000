import { short } from "../../base/format";
import { curveColour } from "../../charts/curves";
import { isDark } from "../../base/theme";
import { judgementMarks, rule } from "./judgement";
import { barLength, type RateRow } from "./rateRows";
import { verdictOf } from "./verdict";

export interface RateBarsProps {
  rows: readonly RateRow[];
  /** Whether these are the rates of now. */
  isNow: boolean;
  isLog: boolean;
  /** Channels whose history is shown. */
  chosen: readonly number[];
  onToggle: (channel: number) => void;
}

/** A row per channel with bars of its rates in and out. */
export function RateBars(props: RateBarsProps): preact.JSX.Element {
  const { rows, isNow, isLog, chosen, onToggle } = props;
  const most = rows.reduce((highest, row) => Math.max(highest, row.in || 0, row.out || 0), 0);
  return (
    <>
      <VerdictLine rows={rows} isNow={isNow} />
      <div class="scroll grow">
        <table class="bars" data-test="rates">
          <thead>
            <tr>
              <th scope="col" title="Show its history">History</th>
              <th scope="col">Channel</th>
              <th scope="col" class="number">In / s</th>
              <th scope="col" class="number">Out / s</th>
              <th scope="col" class="wide">{isLog ? "In above out, logarithmic" : "In above out"}</th>
            </tr>
          </thead>
          <tbody>
            {rows.map((row) => (
              <BarRow
                key={row.channel}
                row={row}
                length={(rate) => barLength(rate, most, isLog)}
                place={chosen.indexOf(row.channel)}
                onToggle={() => onToggle(row.channel)}
              />
            ))}
          </tbody>
        </table>
      </div>
    </>
  );
}

interface BarRowProps {
  row: RateRow;
  length: (rate: number) => number;
  /** Among the channels whose history is shown; -1 when it isn't. */
  place: number;
  onToggle: () => void;
}

function BarRow({ row, length, place, onToggle }: BarRowProps): preact.JSX.Element {
  return (
    <tr class={row.judgement} data-test={`rate-${row.channel}`}>
      <td>
        <label class="touch">
          <input type="checkbox" checked={place >= 0} onChange={onToggle} aria-label={`History of ${row.name}`} />
          <span class="swatch" style={{ background: place < 0 ? "none" : curveColour(place, isDark.value) }} />
        </label>
      </td>
      <th scope="row">
        {row.name}
        {row.judgement !== "" && <b class="mark">{` ${judgementMarks[row.judgement]} ${row.judgement}`}</b>}
      </th>
      <td class="number">{short(row.in)}</td>
      <td class="number">{short(row.out)}</td>
      <td class="wide">
        <Bar kind="in" length={length(row.in)} />
        <Bar kind="out" length={length(row.out)} />
      </td>
    </tr>
  );
}

function Bar(props: { kind: "in" | "out"; length: number }): preact.JSX.Element {
  return <span class={`bar ${props.length > 0 ? props.kind : ""}`} style={{ width: `${100 * props.length}%` }} />;
}

function VerdictLine(props: { rows: readonly RateRow[]; isNow: boolean }): preact.JSX.Element | null {
  const { rows, isNow } = props;
  if (rows.length === 0) {
    return null;
  }
  const { text, tone } = verdictOf(rows, isNow);
  return (
    <details class="verdict">
      <summary data-test="rates-verdict" class={tone}>{text}</summary>
      <p class="faint">{rule}</p>
    </details>
  );
}
