import { useMemo } from "preact/hooks";
import { type Calibration, inBins } from "../../analysis/calibration";
import { parameter, setParameter } from "../../app/route";
import type { Block } from "../../model/blocks";
import type { Reading } from "../../server/poll";
import { axisOf } from "./axisControl";
import { blockPathOf } from "./curveKey";
import { copiesOf, type Copy, withCopies } from "./copies";
import type { HistogramKind } from "./kinds";
import { type ListedCurve, listedCurves } from "./listedCurves";
import { missingIn, type Selection, selectionsOf, selectionText } from "./selection";
import type { LiveCurves } from "./liveCurves";
import { useFirstChannel } from "./useFirstChannel";
import { useHistograms } from "./useHistograms";

/** What is shown, and the one curve that regions are of. */
export interface Curves {
  selections: Selection[];
  /** Blocks that the address asks for and that aren't there. */
  missing: string[];
  choose: (selections: Selection[]) => void;
  /** What is shown stays: the operator works on it. */
  settle: () => void;
  reading: Reading<LiveCurves>;
  isFrozen: boolean;
  setFrozen: (frozen: boolean) => void;
  curves: ListedCurve[];
  analysed: ListedCurve | undefined;
  analyse: (key: string) => void;
  /** The block that counts the analysed curve; none of a file's. */
  block: Block | undefined;
  axis: Calibration;
  /** Fails, with what the operator can do, when there are too many. */
  addCopies: (copies: readonly Copy[]) => void;
  remove: (curve: ListedCurve) => void;
}

/** Whether it is frozen, and what makes it so. */
export type Freezing = readonly [isFrozen: boolean, setFrozen: (frozen: boolean) => void];

export function useCurves(
  kind: HistogramKind,
  blocks: readonly Block[],
  [isFrozen, setFrozen]: Freezing,
): Curves {
  const chosen = parameter("show");
  const selections = selectionsOf(chosen, blocks);
  useFirstChannel(chosen === null ? blocks[0] : undefined, blocks);
  const reading = useHistograms(selections, isFrozen);
  const copies = copiesOf(kind.blockType);
  const blockOf = (curve: string): Block | undefined => blocks.find(({ path }) => path === blockPathOf(curve));
  const calibrationOf = (curve: string): Calibration => axisOf(kind, blockOf(curve), curve);
  const live = reading.value?.curves ?? [];
  const sources = [...live.map(({ key }) => key), ...copies.value.flatMap(({ source }) => source ?? [])];
  const curves = useMemo(
    () => listedCurves(live, copies.value, calibrationOf),
    [reading.value, copies.value, JSON.stringify(sources.map(calibrationOf))],
  );
  const on = parameter("on");
  const analysed = curves.find(({ key }) => key === on) ?? curves[0];
  const choose = (next: Selection[]): void => {
    setFrozen(false);
    setParameter("show", selectionText(next, blocks));
  };
  const settle = (): void => setParameter("show", selectionText(selections, blocks));
  return {
    selections, missing: missingIn(chosen, blocks), choose, settle, reading, isFrozen, setFrozen, curves, analysed,
    analyse: (next) => setParameter("on", next),
    block: analysed?.source == null ? undefined : blockOf(analysed.source),
    axis: analysed?.calibration ?? inBins,
    addCopies: (more) => (copies.value = withCopies(copies.value, more)),
    remove: (curve) => (copies.value = copies.value.filter(({ key }) => key !== curve.key)),
  };
}
