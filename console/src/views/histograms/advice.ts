import type { HistogramKind } from "./kinds";

/** How far the operator has come. */
export interface Progress {
  isCounted: boolean;
  regions: number;
  hasFit: boolean;
  isCalibrated: boolean;
  knownLines: number;
}

/** What to do next, for those who see this for the first time. */
export function adviceOf(kind: HistogramKind, progress: Progress): string {
  if (!progress.isCounted) {
    return "Nothing is counted yet: press Start.";
  }
  if (progress.regions === 0) {
    return "Press “Mark the clearest peak”, or “Mark” and drag over a peak: its figures come at once.";
  }
  if (!progress.hasFit) {
    return "Choose a region below, or mark another one.";
  }
  if (!progress.isCalibrated) {
    return kind.blockType === "spectrum"
      ? "The resolution holds if bin 0 is energy 0. If you know this line, enter its energy " +
        "(Cs-137: 661.7 keV) and press “Calibrate”."
      : "If you know where this peak belongs, enter it and press “Calibrate”; " +
        "or enter the unit of timestamps below.";
  }
  return progress.knownLines === 1
    ? "The axis goes through zero and this line. A second one settles the offset: mark it and calibrate again."
    : "";
}
