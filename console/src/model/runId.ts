/** A run's id proposed from the date: 2026-11-21_001. */
export function proposeRunId(date: Date, number: number): string {
  const two = (n: number): string => String(n).padStart(2, "0");
  const day = `${date.getFullYear()}-${two(date.getMonth() + 1)}-${two(date.getDate())}`;
  return `${day}_${String(number).padStart(3, "0")}`;
}

/** Whether it is one as they are proposed. */
export function isDated(id: string): boolean {
  return /^\d{4}-\d\d-\d\d_\d+$/.test(id);
}

/** Behind the last of this day's ids that are taken. */
export function nextOfDay(date: Date, taken: readonly (string | null | undefined)[]): string {
  const first = proposeRunId(date, 1);
  const next = taken.flatMap((id) => (id?.startsWith(first.slice(0, -3)) ? nextRunId(id) : []));
  return next.sort((a, b) => a.localeCompare(b, undefined, { numeric: true })).at(-1) ?? first;
}

/** The next one: a number at the end goes up by one and keeps its width; without one, "_2" comes behind. */
export function nextRunId(id: string): string {
  const match = /^(.*?)(\d{1,15})$/s.exec(id);
  if (match === null) {
    return `${id}_2`;
  }
  const [, before = "", digits = "0"] = match;
  return before + String(Number(digits) + 1).padStart(digits.length, "0");
}

/** Bytes of a folder's name, on the file systems that there are. */
const longestName = 255;

/** Why this can't be a run's id; null when it can. The id becomes the name of a folder. */
export function runIdFault(id: string): string | null {
  if (id.trim() === "") {
    return "A run needs an id: it becomes the name of the run's folder.";
  }
  if (/[/\\\0]/.test(id) || id === "." || id === "..") {
    return "A run's id becomes the name of a folder: it can't hold / or \\, nor be . or ..";
  }
  if (new TextEncoder().encode(id).length > longestName) {
    return `A run's id becomes the name of a folder: it can't be longer than ${longestName} letters. Shorten it.`;
  }
  return null;
}
