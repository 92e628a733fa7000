import { isSame } from "../../analysis/calibration";
import type { Span } from "../../charts/curves";
import { adviceOf } from "./advice";
import type { HistogramKind } from "./kinds";
import { RegionPanel } from "./RegionPanel";
import { totalOf } from "./selection";
import { knownLines } from "./store";
import type { Curves } from "./useCurves";
import type { Regions } from "./useRegions";

interface Props {
  kind: HistogramKind;
  shown: Curves;
  regions: Regions;
  span: Span;
}

/** The regions of the analysed curve, with what to do next. */
export function RegionsOf({ kind, shown, regions, span }: Props): preact.JSX.Element | null {
  const { analysed, axis, block } = shown;
  if (analysed === undefined) {
    return null;
  }
  const isCalibrated = !isSame(axis, kind.ownCalibration(block));
  const advice = adviceOf(kind, {
    isCounted: totalOf(analysed.counts) > 0,
    regions: regions.regions.length,
    hasFit: regions.reading.fit !== null,
    isCalibrated,
    knownLines: knownLines(regions.regions, analysed.key).length,
  });
  return (
    <RegionPanel
      curve={analysed.key}
      counts={analysed.counts}
      axis={axis}
      unit={kind.units.includes(axis.unit) ? axis.unit : kind.units[0]!}
      regions={regions.regions}
      selected={regions.selected}
      reading={regions.reading}
      advice={advice}
      fault={regions.fault}
      canCalibrate={block !== undefined}
      onSelect={regions.select}
      onAdd={regions.add}
      onRemove={regions.remove}
      onMarkClearest={() => regions.markClearest(span)}
      onCalibrate={regions.calibrate}
    />
  );
}
