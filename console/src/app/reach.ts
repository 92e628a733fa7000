import { computed } from "@preact/signals";
import { timeOfDay } from "../base/format";
import { isUnreached, type Reading } from "../server/poll";
import { account, clock } from "./state";

const patienceMs = 5_000;

/** How old a reading is, in ms. */
export function ageOf(reading: Reading<unknown>): number {
  return Math.max(0, clock.value - reading.heardAt);
}

/** Whether it is kept up; a page that nobody looks at asks seldom. */
export function isKeptUp(reading: Reading<unknown>): boolean {
  return reading.fault === null && (ageOf(reading) < patienceMs || document.hidden);
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
