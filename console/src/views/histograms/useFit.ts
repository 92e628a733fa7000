import { useEffect, useRef, useState } from "preact/hooks";
import { fitPeak, NoFit, type PeakFit } from "../../analysis/fit";
import { PartMissing } from "../../base/loadPart";
import { figuresOf, type Range } from "../../analysis/region";

/** What is known of a region's peak; `fault` says why there's no fit. */
export interface FitReading {
  fit: PeakFit | null;
  fault: string | null;
  /** What was fitted: figures that are compared with the fit are of the same counts. */
  counts: ArrayLike<number> | null;
}

const intervalMs = 1_000;
const none: FitReading = { fit: null, fault: null, counts: null };

/** Fits the region of these counts, at once and then at most once a second. */
export function useFit(counts: ArrayLike<number> | null, range: Range | null, key: string): FitReading {
  const [reading, setReading] = useState(none);
  const last = useRef({ key: "", at: -Infinity });
  useEffect(() => {
    if (last.current.key !== key) {
      last.current = { key, at: -Infinity };
      setReading(none);
    }
    if (counts === null || range === null) {
      return;
    }
    const timer = setTimeout(() => {
      last.current.at = performance.now();
      void fitted(counts, range).then((next) => {
        if (last.current.key === key) {
          setReading(next);
        }
      });
    }, Math.max(0, last.current.at + intervalMs - performance.now()));
    return () => clearTimeout(timer);
  }, [counts, key]);
  return last.current.key === key ? reading : none;
}

async function fitted(counts: ArrayLike<number>, range: Range): Promise<FitReading> {
  try {
    return { fit: await fitPeak(counts, range), fault: null, counts };
  } catch (error) {
    const isTold = error instanceof NoFit || error instanceof PartMissing;
    const fault = isTold ? error.message : `The fit failed: ${String(error)}`;
    const isEmpty = figuresOf(counts, range).gross === 0;
    return { fit: null, fault: isEmpty ? "Nothing is counted here yet." : fault, counts };
  }
}
