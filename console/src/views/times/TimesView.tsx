import { HistogramView } from "../histograms/HistogramView";
import { times } from "../histograms/kinds";

export function TimesView(): preact.JSX.Element {
  return <HistogramView kind={times} />;
}
