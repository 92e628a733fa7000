import { asArray, asObject, BadAnswer, type Json, numbersOf, parseJson } from "./answers";
import type { Answerer } from "./Server";

// What is asked of oscilloscopes. They are found by their name.

/** Samples of one trace; digital ones are 0 and 1. */
export interface Trace {
  channel: number;
  isDigital: boolean;
  /** Among the analog, or the digital, traces of its channel. */
  index: number;
  samples: Float64Array;
}

/** What the configuration says; 0 is unknown. */
export interface ScopeShape {
  channels: number;
  analog: number;
  digital: number;
}

/**
 * The latest traces of these channels and no others. Which channels are answered is one setting for all clients,
 * so it is sent anew before each question, in one go with it.
 */
export async function getTraces(
  server: Answerer,
  name: string,
  shape: ScopeShape,
  chosen: readonly number[],
): Promise<Trace[]> {
  const count = Math.max(shape.channels, ...chosen.map((channel) => channel + 1));
  const flags = Array.from({ length: count }, (_, channel) => (chosen.includes(channel) ? 1 : 0));
  const set = server.ask(name, { cmd: "set_channel", ch_enable: flags });
  const [said, traces] = await Promise.all([set, server.ask(name, { cmd: "require_data" })]);
  parseJson(said, name);
  return tracesOf(parseTraces(traces, name), name, shape, chosen);
}

// With more or fewer than one analog trace a channel the server's commas aren't where they should be.
function parseTraces(text: string, name: string): Json[] {
  try {
    return asArray(parseJson(text, name), name);
  } catch (error) {
    const mended = text.replaceAll("}{", "},{").replaceAll(",,", ",").replaceAll("[,", "[");
    if (mended === text) {
      throw error;
    }
    return asArray(parseJson(mended, name), name);
  }
}

function tracesOf(entries: Json[], name: string, shape: ScopeShape, chosen: readonly number[]): Trace[] {
  const channels = [...chosen].sort((a, b) => a - b);
  const { analog, digital } = tracesAChannel(entries.length, channels.length, shape);
  const perChannel = analog + digital;
  if (entries.length !== perChannel * channels.length) {
    throw new BadAnswer(
      `${name} answers ${entries.length} traces where ${perChannel * channels.length} were chosen: ` +
        "another console may have switched its channels at that moment.",
    );
  }
  const traces = entries.map((entry, i) => {
    const place = i % perChannel;
    const isDigital = place >= analog;
    const channel = channels[Math.floor(i / perChannel)]!;
    const samples = numbersOf(asObject(entry, name)["data"], name);
    return { channel, isDigital, index: isDigital ? place - analog : place, samples };
  });
  const length = traces[0]?.samples.length ?? 0;
  const other = traces.find((trace) => trace.samples.length !== length)?.samples.length;
  if (other !== undefined) {
    throw new BadAnswer(`${name} answers traces of different lengths: ${length} and ${other} samples.`);
  }
  return traces;
}

// A server that doesn't tell has one analog trace a channel, as only such traces are true.
function tracesAChannel(entries: number, channels: number, shape: ScopeShape): Omit<ScopeShape, "channels"> {
  if (shape.analog + shape.digital > 0 || channels === 0) {
    return shape;
  }
  return { analog: 1, digital: Math.max(0, Math.floor(entries / channels) - 1) };
}
