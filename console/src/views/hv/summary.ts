import type { BoardValue } from "../../server/tolerantValues";

/** Unknown is also what was not read of one channel, or has a word that isn't told here: nothing is guessed. */
export type Power = "on" | "off" | "partly" | "changing" | "unknown";

/** A board's high voltage in a few words. */
export interface Summary {
  power: Power;
  /** Such as "HVState 3 × on, 1 × off". */
  text: string;
}

export const powerWords: Record<Power, string> = {
  on: "● on",
  off: "○ off",
  partly: "◐ on in part",
  changing: "↕ changing",
  unknown: "? unknown",
};

// No 1 and 0: what a number means, and whether of this at all, differs from board to board.
const onWords = /^(on|true|enabled)$/i;
const offWords = /^(off|false|disabled)$/i;
const changingWords = /ramp|rising|falling|chang|^(up|down)$/i;
const isState = /state|status/i;
const isVoltage = /vmon|voltage/i;
const isSetPoint = /set|max|min|lim|target/i;

/** What is still measured at channels that are off is less, in V. */
const mostWhenOff = 5;

/**
 * What the names of a board's parameters let one see: those with "state" or "status" in them tell whether it is
 * on, those with "voltage" or "vmon" how high it is. Only those of them with "hv" count where there are any, as
 * alarms have a state too. Nothing is "off" while a voltage says otherwise.
 */
export function summaryOf(values: readonly BoardValue[]): Summary {
  const states = values.filter(({ name }) => isState.test(name));
  const voltages = values.filter(({ name }) => isVoltage.test(name) && !isSetPoint.test(name));
  const texts = [
    ...states.map(({ name, values: words }) => `${name} ${counted(words)}`),
    ...voltages.map(({ name, values: volts }) => `${name} ${rangeOf(volts)}`),
  ];
  const ofHv = states.filter(({ name }) => /hv/i.test(name));
  const power = powerOf((ofHv.length > 0 ? ofHv : states).flatMap((state) => state.values));
  const isLive = voltages.some(({ values: volts }) => volts.some((text) => Math.abs(Number(text)) > mostWhenOff));
  return { power: power === "off" && isLive ? "unknown" : power, text: texts.join("; ") };
}

function powerOfChannel(word: string): Power {
  if (onWords.test(word)) {
    return "on";
  }
  return offWords.test(word) ? "off" : changingWords.test(word) ? "changing" : "unknown";
}

function powerOf(words: readonly string[]): Power {
  const all = new Set(words.map(powerOfChannel));
  if (all.size === 0 || all.has("unknown")) {
    return "unknown";
  }
  return all.has("changing") ? "changing" : all.size > 1 ? "partly" : [...all][0]!;
}

/** "3 × on, 1 × off", in the order of their first channel; a lone one without its number. */
export function counted(words: readonly string[]): string {
  const counts = new Map<string, number>();
  words.forEach((word) => counts.set(word, (counts.get(word) ?? 0) + 1));
  if (words.length === 1) {
    return words[0] || "–";
  }
  return [...counts].map(([word, count]) => `${count} × ${word || "–"}`).join(", ") || "–";
}

/** "0.0 to 202.3", in the board's own texts. */
export function rangeOf(texts: readonly string[]): string {
  const numbers = texts.filter((text) => text !== "" && Number.isFinite(Number(text)));
  numbers.sort((a, b) => Number(a) - Number(b));
  const [least, most] = [numbers[0], numbers[numbers.length - 1]];
  if (least === undefined || most === undefined) {
    return "–";
  }
  return Number(least) === Number(most) ? least : `${least} to ${most}`;
}
