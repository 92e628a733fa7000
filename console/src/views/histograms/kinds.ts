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
  howToConfigure: "behind a source or a tee",
  countingNote: "",
  ownCalibration: () => inBins,
};

export const times: HistogramKind = {
  blockType: "tof_histogram",
  title: "Times",
  quantity: "Time",
  units: ["ns", "µs", "ms", "s"],
  howToConfigure: "behind a source or a tee",
  countingNote: "Times are counted always, stopped or not.",
  ownCalibration: (block) => {
    const binning = block?.shape["binning"];
    return typeof binning === "number" && binning > 0 && Number.isFinite(binning)
      ? { gain: binning, offset: 0, unit: "timestamp units" }
      : inBins;
  },
};
