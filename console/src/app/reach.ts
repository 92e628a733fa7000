import { computed } from "@preact/signals";
import { timeOfDay } from "../base/format";
import { isUnreached, type Reading } from "../server/poll";
import { onWake } from "../server/wake";
import { account, clock } from "./state";

const patienceMs = 5_000;

// What is old because nobody looked is asked for at once then, and is no sign of trouble.
let wokenAt = 0;
onWake(() => (wokenAt = performance.now()));

/** How old a reading is, in ms. */
export function ageOf(reading: Reading<unknown>): number {
  return Math.max(0, clock.value - reading.heardAt);
}

/** Whether it was asked for and not answered for so long; a page that nobody looks at asks seldom. */
export function isOverdue(reading: Reading<unknown>, ms: number): boolean {
  return clock.value - Math.max(reading.heardAt, wokenAt) > ms && !document.hidden;
}

/** Whether it is kept up. */
export function isKeptUp(reading: Reading<unknown>): boolean {
  return reading.fault === null && !isOverdue(reading, patienceMs);
}

/** Whether what it says can be taken for what is. */
export function isKnown(reading: Reading<unknown>): boolean {
  return reading.value !== null && isKeptUp(reading);
}

/** Whether nothing can be asked of the server, which the banner says: what is pressed now would do nothing. */
export const isAway = computed(() => {
  const reading = account.value;
  return reading.fault === null ? reading.value !== null && !isKeptUp(reading) : isUnreached(reading.fault);
});

/** Why a button can't be pressed. */
export const awayText = "The server doesn't answer: what you order wouldn't reach it.";

/** A time of performance.now() as one of the day. */
export function timeOfDayOf(time: number): string {
  return timeOfDay(Date.now() - (performance.now() - time));
}
