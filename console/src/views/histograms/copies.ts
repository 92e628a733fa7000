import { type Signal, signal } from "@preact/signals";
import type { Calibration } from "../../analysis/calibration";
import { parseTable } from "../../analysis/csv";

/** Counts as they once were, to compare with. */
export interface Copy {
  label: string;
  counts: ArrayLike<number>;
  calibration: Calibration;
  /** The block that they were counted by; null when they come from a file. */
  path: string | null;
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

const largestFile = 64 * 1024 * 1024;

/** Fails with a message for the operator. */
export async function copiesFromFile(file: File): Promise<Copy[]> {
  if (file.size > largestFile) {
    throw new Error(`${file.name} is too large for a file of histograms.`);
  }
  const { calibration, columns } = parseTable(await file.text());
  return columns.map(({ label, counts }) => ({ label: `${label} (file)`, counts, calibration, path: null }));
}
