/** Why the rates shown aren't those over the time that was asked for; null where they are. */
export function spanNote(asked: number | null, shown: number, tick: number | null): string | null {
  if (asked === null) {
    return null;
  }
  if (tick === null) {
    const remedy = "They will be as soon as the timestamps' unit is known: wait, or enter it.";
    return `These are the rates since the server's start, not those over the last ${asked} s. ${remedy}`;
  }
  // Where records are far apart, rates can't be of a time as short as asked for.
  return shown >= 1.5 * asked
    ? `These are the rates over ${Math.round(shown)} s: no record came in between.`
    : null;
}
