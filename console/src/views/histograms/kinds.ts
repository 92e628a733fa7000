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
  /** What to add to the configuration where there is none. */
  whatToConfigure: string;
  /** What the state of counting doesn't tell. */
  countingNote: string;
  /** What a bin means before the operator says so. */
  ownCalibration: (block: Block | undefined) => Calibration;
}

export const spectra: HistogramKind = {
  blockType: "spectrum",
  title: "Spectra",
  quantity: "Energy",
  units: ["keV", "MeV"],
  whatToConfigure:
    'The configuration has no block that counts energies. Add one of "block_type": "spectrum" behind a source.',
  countingNote: "",
  ownCalibration: () => inBins,
};

export const times: HistogramKind = {
  blockType: "tof_histogram",
  title: "Times",
  quantity: "Time",
  units: ["ns", "µs", "ms", "s"],
  whatToConfigure:
    'The configuration has no block that counts times. Add one of "block_type": "tof_histogram" behind a source.',
  countingNote: "Times are counted always, stopped or not.",
  ownCalibration: (block) => {
    const binning = block?.shape["binning"];
    return typeof binning === "number" && binning > 0 && Number.isFinite(binning)
      ? { gain: binning, offset: 0, unit: "timestamp units" }
      : inBins;
  },
};
