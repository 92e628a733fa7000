import { useMemo, useState } from "preact/hooks";
import { type Calibration, inBins } from "../../analysis/calibration";
import { parameter, setParameter } from "../../app/route";
import type { Block } from "../../model/blocks";
import type { Reading } from "../../server/poll";
import { copiesOf, type Copy, withCopies } from "./copies";
import type { HistogramKind } from "./kinds";
import { copyKey, type ListedCurve, listedCurves, withAnalysed } from "./listedCurves";
import { type Selection, selectionsOf, selectionText } from "./selection";
import { storedCalibration } from "./store";
import type { LiveCurves } from "./liveCurves";
import { useFirstChannel } from "./useFirstChannel";
import { useHistograms } from "./useHistograms";

/** What is shown, and the one curve that regions are of. */
export interface Curves {
  selections: Selection[];
  choose: (selections: Selection[]) => void;
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

export function useCurves(kind: HistogramKind, blocks: readonly Block[]): Curves {
  const chosen = parameter("show");
  const selections = selectionsOf(chosen, blocks);
  const [isFrozen, setFrozen] = useState(false);
  useFirstChannel(chosen === null ? blocks[0] : undefined, blocks);
  const reading = useHistograms(selections, isFrozen);
  const copies = copiesOf(kind.blockType);
  const calibrationOf = (path: string): Calibration =>
    storedCalibration(path) ?? kind.ownCalibration(blocks.find((block) => block.path === path));
  const calibrations = JSON.stringify(blocks.map((block) => calibrationOf(block.path)));
  const key = parameter("on");
  const { curves, analysed } = useMemo(
    () => withAnalysed(listedCurves(reading.value?.curves ?? [], copies.value, calibrationOf), key, calibrationOf),
    [reading.value, copies.value, calibrations, key],
  );
  const choose = (next: Selection[]): void => {
    setFrozen(false);
    setParameter("show", selectionText(next, blocks));
  };
  return {
    selections, choose, reading, isFrozen, setFrozen, curves, analysed,
    analyse: (next) => setParameter("on", next),
    block: blocks.find((block) => block.path === analysed?.path),
    axis: analysed?.calibration ?? inBins,
    addCopies: (more) => (copies.value = withCopies(copies.value, more)),
    remove: (curve) => (copies.value = copies.value.filter((_, i) => copyKey(i) !== curve.key)),
  };
}
