import { useState } from "preact/hooks";
import type { View } from "./layout";

/** A sample that is read out, and one that it is compared with. */
export interface Cursor {
  at: number | null;
  mark: number | null;
  /** To the nearest sample. */
  set: (sample: number) => void;
  /** By so many samples, from the middle when it is nowhere. */
  move: (samples: number) => void;
  toggleMark: () => void;
}

export function useCursor(samples: number, view: View): Cursor {
  const [at, setAt] = useState<number | null>(null);
  const [mark, setMark] = useState<number | null>(null);
  const set = (sample: number): void => setAt(Math.min(Math.max(Math.round(sample), 0), Math.max(0, samples - 1)));
  return {
    at,
    mark,
    set,
    move: (step) => set((at ?? (view[0] + view[1]) / 2) + step),
    toggleMark: () => setMark(mark === null ? at : null),
  };
}
