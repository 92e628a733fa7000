import type { Span } from "../../charts/curves";
import { adviceOf } from "./advice";
import type { AxisControl } from "./axisControl";
import type { HistogramKind } from "./kinds";
import { RegionPanel } from "./RegionPanel";
import { totalOf } from "./selection";
import type { Curves } from "./useCurves";
import type { Regions } from "./useRegions";

interface Props {
  kind: HistogramKind;
  shown: Curves;
  regions: Regions;
  /** None of a file's. */
  control: AxisControl | null;
  span: Span;
}

/** The regions of the analysed curve, with what to do next. */
export function RegionsOf({ kind, shown, regions, control, span }: Props): preact.JSX.Element | null {
  const { analysed, axis } = shown;
  if (analysed === undefined) {
    return null;
  }
  const advice = adviceOf(kind, {
    isCounted: totalOf(analysed.counts) > 0,
    regions: regions.regions.length,
    hasFit: regions.reading.fit !== null,
    isCalibrated: kind.units.includes(axis.unit),
    knownLines: control?.lines.length ?? 0,
  });
  return (
    <RegionPanel
      counts={analysed.counts}
      axis={axis}
      unit={kind.units.includes(axis.unit) ? axis.unit : kind.units[0]!}
      regions={regions.regions}
      selected={regions.selected}
      reading={regions.reading}
      advice={advice}
      fault={regions.fault}
      control={control}
      onSelect={regions.select}
      onAdd={regions.add}
      onRemove={regions.remove}
      onMarkClearest={() => regions.markClearest(span)}
    />
  );
}
