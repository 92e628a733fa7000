import { roundStep } from "../../charts/roundStep";

/** How positions in samples are told: times when the operator said how long a sample is. */
export interface TimeUnit {
  name: string;
  /** Of one sample. */
  perSample: number;
}

const units: readonly (readonly [string, number])[] = [
  ["ns", 1],
  ["µs", 1e3],
  ["ms", 1e6],
];

/** The unit that suits a width in samples. */
export function unitFor(samples: number, nsPerSample: number | null): TimeUnit {
  if (nsPerSample === null) {
    return { name: "samples", perSample: 1 };
  }
  const width = samples * nsPerSample;
  const [name, ns] = units.find(([, unit]) => width < 2000 * unit) ?? units[units.length - 1]!;
  return { name, perSample: nsPerSample / ns };
}

/** A position or a distance in digits that tell samples apart. */
export function timeText(samples: number, unit: TimeUnit): string {
  const digits = Math.max(0, Math.min(6, Math.ceil(-Math.log10(unit.perSample))));
  return `${(samples * unit.perSample).toFixed(digits)} ${unit.name}`;
}

export interface Tick {
  /** In samples. */
  at: number;
  text: string;
}

/** About so many round positions in what is looked at. */
export function ticksOf(from: number, to: number, unit: TimeUnit, count: number): Tick[] {
  const [low, high] = [from * unit.perSample, to * unit.perSample];
  const step = roundStep((high - low) / Math.max(1, count));
  const digits = Math.max(0, Math.min(9, -Math.floor(Math.log10(step) + 1e-9)));
  const ticks: Tick[] = [];
  for (let i = Math.ceil(low / step); i * step <= high && ticks.length < 100; ++i) {
    ticks.push({ at: (i * step) / unit.perSample, text: (i * step).toFixed(digits) });
  }
  return ticks;
}

/** As entered; null when it is no length of time. */
export function nsOf(text: string | null): number | null {
  const ns = Number(text ?? "");
  return ns > 0 && ns <= 1e9 ? ns : null;
}
