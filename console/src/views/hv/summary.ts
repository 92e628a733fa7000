import type { BoardValue } from "../../server/tolerantValues";

export type Power = "on" | "off" | "changing" | "unknown";

/** A board's high voltage in a few words. */
export interface Summary {
  power: Power;
  /** Such as "HVState 3 × on, 1 × off". */
  text: string;
}

export const powerMarks: Record<Power, string> = { on: "●", off: "○", changing: "◐", unknown: "?" };

const onWords = /^(on|1|true|enabled)$/i;
const offWords = /^(off|0|false|disabled)$/i;
const isState = /state|status/i;
const isVoltage = /vmon|voltage/i;

/**
 * What the names of a board's parameters let one see: those with "state" or "status" in them tell whether it is
 * on, those with "voltage" or "vmon" how high it is.
 */
export function summaryOf(values: readonly BoardValue[]): Summary {
  const states = values.filter(({ name }) => isState.test(name));
  const voltages = values.filter(({ name }) => isVoltage.test(name));
  const texts = [
    ...states.map(({ name, values: words }) => `${name} ${counted(words)}`),
    ...voltages.map(({ name, values: volts }) => `${name} ${rangeOf(volts)}`),
  ];
  return { power: powerOf(states.flatMap((state) => state.values)), text: texts.join("; ") };
}

function powerOf(words: readonly string[]): Power {
  if (words.length === 0) {
    return "unknown";
  }
  if (words.every((word) => onWords.test(word))) {
    return "on";
  }
  return words.every((word) => offWords.test(word)) ? "off" : "changing";
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
