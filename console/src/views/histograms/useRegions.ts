import { useEffect, useState } from "preact/hooks";
import { binOf, type Calibration, positionOf } from "../../analysis/calibration";
import { clearestPeak } from "../../analysis/peaks";
import { type Range, rangeWithin } from "../../analysis/region";
import { parameter, setParameter } from "../../app/route";
import type { Band, Span } from "../../charts/curves";
import type { Curves } from "./useCurves";
import { mostRegions, type Region, storedRegions, storeRegions } from "./store";
import { type FitReading, useFit } from "./useFit";

export interface Regions {
  regions: Region[];
  selected: number;
  select: (index: number) => void;
  add: (range: Range) => void;
  remove: (index: number) => void;
  /** By positions on the axis. */
  mark: (from: number, to: number) => void;
  /** Of what is looked at. */
  markClearest: (span: Span) => void;
  reading: FitReading;
  fault: string | null;
}

const tooNarrow = "That is less than five bins: zoom in and mark a wider part.";
const noPeak = "No peak stands out here: count longer, or zoom to where one should be.";

/** The regions of the block that is analysed. Those of a file are of no block: kept as of its label. */
export function useRegions({ analysed, block, axis, settle }: Curves): Regions {
  const path = block?.path ?? analysed?.label ?? "";
  const regions = storedRegions(path);
  const selected = Math.min(Math.max(0, Number(parameter("region")) || 0), regions.length - 1);
  const region = regions[selected];
  const counts = analysed?.counts ?? null;
  const bins = counts?.length ?? 0;
  const range = region === undefined ? null : rangeWithin(region.from, region.to, bins);
  const reading = useFit(counts, range, range === null ? "" : `${analysed!.key} ${range.from} ${range.to}`);
  const [fault, setFault] = useState<string | null>(null);
  useEffect(() => setFault(null), [path, regions.length]);
  const select = (index: number): void => setParameter("region", String(index));
  const add = (added: Range): void => {
    if (regions.length < mostRegions) {
      settle();
      storeRegions(path, [...regions, { from: added.from, to: added.to }]);
      select(regions.length);
    }
  };
  const addOr = (found: Range | null, why: string): void => {
    setFault(found === null ? why : null);
    if (found !== null) {
      add(found);
    }
  };
  return {
    regions, selected, select, add, reading, fault,
    remove: (index) => storeRegions(path, regions.filter((_, i) => i !== index)),
    mark: (from, to) => addOr(rangeWithin(binOf(from, axis), binOf(to, axis), bins), tooNarrow),
    markClearest: (span) => addOr(clearestPeak(counts ?? [], binsOfSpan(span, axis, bins), regions), noPeak),
  };
}

function binsOfSpan(span: Span, axis: Calibration, bins: number): Range {
  const whole = { from: 0, to: bins - 1 };
  return span === null ? whole : (rangeWithin(binOf(span[0], axis), binOf(span[1], axis), bins) ?? whole);
}

export function bandsOf(regions: readonly Region[], selected: number, axis: Calibration): Band[] {
  return regions.map(({ from, to }, i) => ({
    from: positionOf(from - 0.5, axis),
    to: positionOf(to + 0.5, axis),
    label: `R${i + 1}`,
    selected: i === selected,
  }));
}
