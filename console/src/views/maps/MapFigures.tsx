import { whole } from "../../base/format";
import { areaOf, shownOf, wholeMap } from "../../charts/heat/heatArea";
import { type Summary, summaryOf } from "../../charts/heat/summary";
import type { Counts2d } from "../../model/data";

export interface MapFiguresProps {
  map: Counts2d;
  shown: Summary;
  /** What is counted. */
  noun: string;
  /** Cells that only count points tell nothing by themselves. */
  isCells: boolean;
}

/** What the map holds, in numbers. */
export function MapFigures(props: MapFiguresProps): preact.JSX.Element {
  const { map, shown, noun, isCells } = props;
  const isWhole = shown.columns.length === map.columns && shown.rows.length === map.rows;
  const all = isWhole ? shown : summaryOf(map, areaOf(shownOf(wholeMap, map)));
  const place = shown.mostAt && ` (row ${shown.mostAt.row}, column ${shown.mostAt.column})`;
  return (
    <dl class="figures">
      <dt>{`${noun} in all`}</dt>
      <dd data-test="total">{whole(all.total)}</dd>
      <dt>{`${noun} shown`}</dt>
      <dd data-test="shown">{whole(shown.total)}</dd>
      {isCells && (
        <>
          <dt>Most</dt>
          <dd data-test="most">{whole(shown.most) + (place ?? "")}</dd>
          <dt>Rows × columns</dt>
          <dd data-test="size">{`${map.rows} × ${map.columns}`}</dd>
        </>
      )}
    </dl>
  );
}
