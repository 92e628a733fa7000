import { type Signal, signal } from "@preact/signals";
import type { Calibration } from "../../analysis/calibration";

/** Counts as they once were, to compare with. */
export interface Copy {
  /** Its own for as long as the page lasts, whatever is removed. */
  key: string;
  label: string;
  counts: ArrayLike<number>;
  calibration: Calibration;
  /** The live curve that they were of; null when they come from a file. */
  source: string | null;
}

let made = 0;

export function copyOf(of: Omit<Copy, "key">): Copy {
  return { ...of, key: `copy ${++made}` };
}

export const mostCopies = 8;

const copies = new Map<string, Signal<readonly Copy[]>>();

/** The copies of a kind of histogram; they last as long as the page does. */
export function copiesOf(kind: string): Signal<readonly Copy[]> {
  const known = copies.get(kind) ?? signal<readonly Copy[]>([]);
  copies.set(kind, known);
  return known;
}

/** Fails, with what the operator can do, when there are too many. */
export function withCopies(before: readonly Copy[], more: readonly Copy[]): Copy[] {
  if (before.length + more.length > mostCopies) {
    const found = `there are ${before.length} and ${more.length} more`;
    throw new Error(`${mostCopies} copies can be kept beside each other, ${found}: remove some first.`);
  }
  return [...before, ...more];
}
