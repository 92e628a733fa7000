import { whole } from "../../base/format";
import { type Calibration, positionOf } from "../../analysis/calibration";
import { figuresOf, type Range } from "../../analysis/region";
import { calibrated, withError } from "../../analysis/resolution";
import { positionText } from "./display";
import type { FitReading } from "./useFit";

interface Props {
  counts: ArrayLike<number>;
  range: Range;
  axis: Calibration;
  reading: FitReading;
}

const explained = {
  net: "Gross less n bins × the mean of the outermost tenth of the bins on both sides",
  centroid: "Mean position of what is above the line through both edges",
  fwhm: "Full width at half of the greatest height above that line, between the crossings",
  chi: "About 1 when the counts follow a Gauss peak on a line; less where most bins are empty",
};

/** What is in a region, directly and by the fit. */
export function RegionFigures({ counts, range, axis, reading }: Props): preact.JSX.Element {
  const figures = figuresOf(reading.counts ?? counts, range);
  const { centroid, fwhm } = figures;
  return (
    <>
      <dl class="figures" data-test="figures">
        <dt>Gross</dt>
        <dd data-test="gross">{whole(figures.gross)}</dd>
        <dt title={explained.net}>Net</dt>
        <dd data-test="net" title={explained.net}>{`${whole(figures.net)} ± ${whole(figures.netError)}`}</dd>
        <dt title={explained.centroid}>Centroid</dt>
        <dd
          data-test="centroid"
        >
          {centroid === null ? "–" : positionText(positionOf(centroid, axis), finer(axis))}
        </dd>
        <dt title={explained.fwhm}>FWHM</dt>
        <dd data-test="fwhm">{fwhm === null ? "–" : widthText(fwhm * axis.gain, axis)}</dd>
      </dl>
      <FitFigures reading={reading} axis={axis} />
    </>
  );
}

function FitFigures({ reading, axis }: { reading: FitReading; axis: Calibration }): preact.JSX.Element {
  const { fit, fault } = reading;
  if (fit === null) {
    return <p class={fault === null ? "faint" : "warn"} data-test="fit-fault">{fault ?? "Fitting …"}</p>;
  }
  const peak = calibrated(fit, axis);
  return (
    <dl class="figures fit" data-test="fit">
      <dt class="strong">Resolution</dt>
      <dd
        class="strong"
        data-test="resolution"
      >
        {peak.resolution === null ? "–" : `${withError(peak.resolution)} %`}
      </dd>
      <dt>Fitted position</dt>
      <dd data-test="fit-mean">{`${withError(peak.mean)} ${axis.unit}`}</dd>
      <dt>Fitted FWHM</dt>
      <dd data-test="fit-fwhm">{`${withError(peak.fwhm)} ${axis.unit}`}</dd>
      <dt>Fitted area</dt>
      <dd data-test="fit-area">{`${whole(fit.area)} ± ${whole(fit.areaError)}`}</dd>
      <dt title={explained.chi}>χ² / degrees</dt>
      <dd
        data-test="fit-chi"
        title={explained.chi}
      >
        {`${fit.chiSquare.toFixed(1)} / ${fit.degrees} = ${(fit.chiSquare / fit.degrees).toFixed(2)}`}
      </dd>
    </dl>
  );
}

function widthText(width: number, axis: Calibration): string {
  return positionText(width, finer(axis)).replace(/^bin (.*)/, "$1 bin");
}

/** Peaks are known better than a bin is wide. */
function finer(axis: Calibration): Calibration {
  return { ...axis, gain: axis.gain / 10 };
}
