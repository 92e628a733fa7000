import { signal } from "@preact/signals";
import { timeOfDay } from "../base/format";
import { view, views } from "./route";

/** Why something failed that was done on a view that was left meanwhile; until somebody has read it. */
export const lateFaults = signal<readonly string[]>([]);

/** More than are ever read. */
const mostKept = 5;

/** Has it fail on the view that is shown now, should it fail later. */
export function noterOfLate(): (fault: string) => void {
  const shown = view.value;
  const name = views.find(([known]) => known === shown)![1];
  return (fault) => {
    const text = `What was done on “${name}” went wrong, told at ${timeOfDay(Date.now())}: ${fault}`;
    lateFaults.value = [...lateFaults.value, text].slice(-mostKept);
  };
}

export function forgetLateFaults(): void {
  lateFaults.value = [];
}
