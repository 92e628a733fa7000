import { type Calibration, isSame } from "../../analysis/calibration";
import type { Range } from "../../analysis/region";
import type { Block } from "../../model/blocks";
import { blockPathOf } from "./curveKey";
import { axisThrough, type KnownLine, withLine } from "./knownLines";
import type { HistogramKind } from "./kinds";
import {
  calibrationKeptFor, storeCalibration, storedCalibration, storedLines, storedUnitNs, storeLines,
} from "./store";

/** What was entered for the curve or its block, or else what is known of its bins. */
export function axisOf(kind: HistogramKind, block: Block | undefined, curve: string): Calibration {
  return storedCalibration(curve) ?? kind.ownCalibration(block, storedUnitNs(blockPathOf(curve)));
}

/** What the operator says of a curve's axis. */
export interface AxisControl {
  /** Null where nothing was entered, for the curve or for its block. */
  entered: Calibration | null;
  /** Whether what was entered is for all channels of the block. */
  isShared: boolean;
  lines: KnownLine[];
  /** Null goes back to the block's, or else to the axis without a calibration. */
  set: (calibration: Calibration | null) => void;
  /** Makes the calibration that of all channels that have none of their own. */
  share: () => void;
  /** Calibrates by this line and those before; false, and nothing is changed, when no rising axis goes through. */
  addLine: (line: KnownLine, fittedIn: Range) => boolean;
  removeLine: (line: KnownLine) => void;
}

export function axisControlOf(curve: string): AxisControl {
  const [entered, lines, path] = [storedCalibration(curve), storedLines(curve), blockPathOf(curve)];
  const isShared = calibrationKeptFor(curve) === null && entered !== null;
  return {
    entered, isShared, lines,
    set: (calibration) => storeCalibration(calibration === null && isShared ? path : curve, calibration),
    share: () => {
      storeCalibration(path, entered);
      storeCalibration(curve, null);
    },
    addLine: (line, fittedIn) => {
      const next = withLine(lines, line, fittedIn);
      const axis = axisThrough(next, line.unit);
      if (axis !== null) {
        storeLines(curve, next);
        storeCalibration(curve, axis);
      }
      return axis !== null;
    },
    removeLine: (line) => {
      const left = lines.filter(({ bin }) => bin !== line.bin);
      const through = axisThrough(lines, line.unit);
      // An axis that was entered otherwise doesn't depend on the lines.
      if (entered !== null && through !== null && isSame(entered, through)) {
        storeCalibration(curve, axisThrough(left, line.unit));
      }
      storeLines(curve, left);
    },
  };
}
