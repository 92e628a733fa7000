import type { Trace } from "../../src/server/scope";

export function analogOf(channel: number, ...samples: number[]): Trace {
  return { channel, isDigital: false, index: 0, samples: Float64Array.from(samples) };
}

export function digitalOf(channel: number, index: number, ...samples: number[]): Trace {
  return { channel, isDigital: true, index, samples: Float64Array.from(samples) };
}
