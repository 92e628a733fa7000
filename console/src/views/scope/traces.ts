import type { Trace } from "../../server/scope";

/** Names a trace in the address and in lists: "3" and "3.1" are analog, "3d0" is digital. */
export function keyOf(trace: Trace): string {
  if (trace.isDigital) {
    return `${trace.channel}d${trace.index}`;
  }
  return trace.index === 0 ? String(trace.channel) : `${trace.channel}.${trace.index}`;
}

export function labelOf(trace: Trace): string {
  return `Ch ${keyOf(trace)}`;
}

export function sameTraces(one: readonly Trace[], other: readonly Trace[]): boolean {
  return one.length === other.length && one.every((trace, i) => sameTrace(trace, other[i]!));
}

function sameTrace(one: Trace, other: Trace): boolean {
  if (keyOf(one) !== keyOf(other) || one.samples.length !== other.samples.length) {
    return false;
  }
  for (let i = 0; i < one.samples.length; ++i) {
    if (one.samples[i] !== other.samples[i]) {
      return false;
    }
  }
  return true;
}

/** True before the first waveform. */
export function areAllZero(traces: readonly Trace[]): boolean {
  return traces.every(({ samples }) => samples.every((sample) => sample === 0));
}

/** The least and the greatest sample. */
export interface Envelope {
  low: number;
  high: number;
}

/** One pulse may be small or large by chance: so many tell what is usual. */
export const firstOnes = 5;

/** The first few waveforms of each trace, by its key. */
export type FirstTraces = ReadonlyMap<string, readonly Trace[]>;

/** With these where there are still too few. A channel whose samples are all 0 had no waveform. */
export function withFirst(known: FirstTraces, traces: readonly Trace[]): FirstTraces {
  return withMore(known, traces, 1);
}

/** These stand for all. */
export function onlyThese(traces: readonly Trace[]): FirstTraces {
  return withMore(new Map(), traces, firstOnes);
}

function withMore(known: FirstTraces, traces: readonly Trace[], times: number): FirstTraces {
  const copies = (trace: Trace): Trace[] => Array<Trace>(times).fill(trace);
  const before = (trace: Trace): readonly Trace[] => known.get(keyOf(trace)) ?? [];
  const more = traces.filter((trace) => before(trace).length < firstOnes && !areAllZero([trace]));
  return more.length === 0
    ? known
    : new Map([...known, ...more.map((trace) => [keyOf(trace), [...before(trace), ...copies(trace)]] as const)]);
}

/** Of the middle one of each trace's first waveforms, by their heights. */
export function usualEnvelope(first: FirstTraces, channels: readonly number[]): Envelope | null {
  const height = (trace: Trace): number => {
    const envelope = envelopeOf([trace]);
    return envelope === null ? 0 : envelope.high - envelope.low;
  };
  const middles = [...first.values()]
    .map((traces) => [...traces].sort((a, b) => height(a) - height(b))[traces.length >> 1]!)
    .filter(({ channel }) => channels.includes(channel));
  return envelopeOf(middles);
}

/** Of the analog traces; null of nothing. */
export function envelopeOf(traces: Iterable<Trace>): Envelope | null {
  let [low, high] = [Infinity, -Infinity];
  for (const { samples, isDigital } of traces) {
    for (let i = 0; !isDigital && i < samples.length; ++i) {
      low = samples[i]! < low ? samples[i]! : low;
      high = samples[i]! > high ? samples[i]! : high;
    }
  }
  return low <= high ? { low, high } : null;
}
