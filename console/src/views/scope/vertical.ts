import { roundStep } from "../../charts/roundStep";
import type { Envelope } from "./traces";

/** How a trace stands on the screen. */
export interface Vertical {
  /** The value in the middle. */
  offset: number;
  /** Values from one line to the next. */
  perDivision: number;
}

export const divisions = 8;

/** The next coarser step of that series, or the next finer. */
export function neighbourStep(step: number, coarser: boolean): number {
  return roundStep(coarser ? step * 1.1 : step * 0.3);
}

/** Shows all of it with a margin of half a division or more, and lines at round values. */
export function fitted(seen: Envelope | null): Vertical {
  if (seen === null) {
    return { offset: 0, perDivision: 1 };
  }
  const perDivision = roundStep((seen.high - seen.low) / (divisions - 2));
  return { offset: Math.round((seen.low + seen.high) / 2 / perDivision) * perDivision, perDivision };
}

/** What the operator set of a trace; what is missing fits by itself. */
export type Setting = Partial<Vertical>;

const largest = 1e12;

/** From the address: "0:1000:50;3::20". */
export function parseSettings(text: string): Map<string, Setting> {
  const settings = new Map<string, Setting>();
  for (const part of text.split(";")) {
    const match = /^(\d{1,6}(?:\.\d{1,3})?):([^:]*):([^:]*)$/.exec(part);
    if (match !== null) {
      const [, key = "", offset = "", perDivision = ""] = match;
      const setting = settingOf(offset, perDivision);
      if (Object.keys(setting).length > 0) {
        settings.set(key, setting);
      }
    }
  }
  return settings;
}

/** Of texts as they are entered; what is no number is missing. */
export function settingOf(offset: string, perDivision: string): Setting {
  const [middle, step] = [numberOf(offset), numberOf(perDivision)];
  return {
    ...(Math.abs(middle) <= largest ? { offset: middle } : {}),
    ...(step > 1 / largest && step <= largest ? { perDivision: step } : {}),
  };
}

function numberOf(text: string): number {
  return text.trim() === "" ? NaN : Number(text);
}

/** Null when nothing is set. */
export function formatSettings(settings: ReadonlyMap<string, Setting>): string | null {
  const parts = [...settings]
    .filter(([, setting]) => Object.keys(setting).length > 0)
    .map(([key, { offset, perDivision }]) => `${key}:${offset ?? ""}:${perDivision ?? ""}`);
  return parts.length === 0 ? null : parts.join(";");
}
