import { type Calibration, inBins } from "../../analysis/calibration";
import type { Block } from "../../model/blocks";

/** What tells spectra from time distributions. */
export interface HistogramKind {
  blockType: string;
  title: string;
  /** What the axis shows, in words. */
  quantity: string;
  /** Of calibrations that the operator enters. */
  units: readonly string[];
  /** Where in the configuration such a block belongs. */
  howToConfigure: string;
  /** What stands in place of a state of counting that tells nothing. */
  countingNote: string;
  /** What a bin means before the operator calibrates; `unitNs` is what is known of the timestamps' unit. */
  ownCalibration: (block: Block | undefined, unitNs: number | null) => Calibration;
  /** Whether the unit of timestamps makes an axis of this block. */
  hasTimestampUnit: (block: Block) => boolean;
}

export const spectra: HistogramKind = {
  blockType: "spectrum",
  title: "Spectra",
  quantity: "Energy",
  units: ["keV", "MeV"],
  howToConfigure: "behind a source or a tee",
  countingNote: "",
  ownCalibration: () => inBins,
  hasTimestampUnit: () => false,
};

export const times: HistogramKind = {
  blockType: "tof_histogram",
  title: "Times",
  quantity: "Time",
  units: ["ns", "µs", "ms", "s"],
  howToConfigure: "behind a source or a tee",
  countingNote: "Times are counted always.",
  ownCalibration: (block, unitNs) => {
    const binning = binningOf(block);
    if (binning === null) {
      return inBins;
    }
    return unitNs === null
      ? { gain: binning, offset: 0, unit: "timestamp units" }
      : { gain: binning * unitNs, offset: 0, unit: "ns" };
  },
  hasTimestampUnit: (block) => binningOf(block) !== null,
};

/** So many timestamp units are a bin; null where the server doesn't tell. */
function binningOf(block: Block | undefined): number | null {
  const binning = block?.shape["binning"];
  return typeof binning === "number" && binning > 0 && Number.isFinite(binning) ? binning : null;
}
