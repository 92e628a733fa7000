import { HistogramView } from "../histograms/HistogramView";
import { spectra } from "../histograms/kinds";

export function SpectraView(): preact.JSX.Element {
  return <HistogramView kind={spectra} />;
}
