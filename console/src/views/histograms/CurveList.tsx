import { isDark } from "../../base/theme";
import { whole } from "../../base/format";
import { type CurveColour, curveColour } from "../../charts/curves";
import { fitColour } from "./display";
import type { ListedCurve } from "./listedCurves";
import { totalOf } from "./selection";

interface Props {
  curves: readonly ListedCurve[];
  analysed: ListedCurve | undefined;
  /** What the fit says; null when none is drawn. */
  fitText: string | null;
  onAnalyse: (key: string) => void;
  onRemove: (curve: ListedCurve) => void;
}

/** The curves, their colours and sums; one of them is the one that regions are of. */
export function CurveList(props: Props): preact.JSX.Element {
  return (
    <table class="curves" data-test="curves">
      <thead>
        <tr>
          <th colSpan={2}>Analysed curve</th>
          <th class="number">Counts</th>
          <th />
        </tr>
      </thead>
      <tbody>
        {props.curves.map((curve, colour) => (
          <CurveRow key={curve.key} {...props} curve={curve} colour={colour} />
        ))}
        {props.fitText !== null && (
          <tr>
            <td><Swatch colour={fitColour} isDashed /></td>
            <td colSpan={3}>{props.fitText}</td>
          </tr>
        )}
      </tbody>
    </table>
  );
}

function CurveRow(props: Props & { curve: ListedCurve; colour: number }): preact.JSX.Element {
  const { curve, colour, analysed, onAnalyse, onRemove } = props;
  return (
    <tr>
      <td><Swatch colour={colour} isDashed={curve.isCopy} /></td>
      <td>
        <label>
          <input type="radio" name="analysed" checked={curve === analysed} onChange={() => onAnalyse(curve.key)} />
          {curve.label}
        </label>
      </td>
      <td class="number" data-test="total">{whole(totalOf(curve.counts))}</td>
      <td>
        {curve.isCopy && (
          <button type="button" class="quiet" aria-label={`Remove ${curve.label}`} onClick={() => onRemove(curve)}>
            ✕
          </button>
        )}
      </td>
    </tr>
  );
}

function Swatch({ colour, isDashed }: { colour: CurveColour; isDashed: boolean }): preact.JSX.Element {
  const style = { borderColor: curveColour(colour, isDark.value) };
  return <span class={isDashed ? "swatch dashed" : "swatch"} style={style} />;
}
