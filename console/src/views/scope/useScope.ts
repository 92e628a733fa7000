import { useEffect, useMemo, useState } from "preact/hooks";
import { channelsOfAddress, formatChannels } from "../../analysis/channels";
import { limited, type Span } from "../../charts/curves";
import { server } from "../../app/state";
import { usePolled } from "../../app/usePolled";
import { type Block, sizeOf } from "../../model/blocks";
import type { Reading } from "../../server/poll";
import { getTraces, type ScopeShape, type Trace } from "../../server/scope";
import { useKept } from "../common/useKept";
import { type Capture, captured, type Mode, nothingCaptured, refitted, type When } from "./capture";
import type { View } from "./layout";
import { nsOf } from "./timeAxis";
import { usualEnvelope } from "./traces";
import { formatTrigger, parseTrigger, proposedTrigger, type Trigger } from "./trigger";
import { fitted, formatSettings, parseSettings, type Setting, type Vertical } from "./vertical";

export const tracesMs = 200;
/** Offered when the server doesn't tell. */
const usualChannels = 16;

/** The state of an oscilloscope's screen, and what changes it. */
export interface Scope {
  block: Block;
  shape: ScopeShape;
  channels: readonly number[];
  setChannels: (channels: readonly number[]) => void;
  /** Which of the colours of curves a channel has: its place among those chosen. */
  colourOf: (channel: number) => number;
  reading: Reading<readonly Trace[]>;
  capture: Capture;
  setMode: (mode: Mode) => void;
  trigger: Trigger;
  setTrigger: (trigger: Trigger) => void;
  /** Takes another trace, at the level that suits it. */
  triggerOn: (key: string) => void;
  settings: ReadonlyMap<string, Setting>;
  set: (key: string, setting: Setting) => void;
  verticalOf: (key: string) => Vertical;
  /** All traces so that all is seen. */
  fit: () => void;
  view: View;
  setView: (view: View | null) => void;
  nsPerSample: number | null;
  setNs: (text: string) => void;
  isStacked: boolean;
  setStacked: (isStacked: boolean) => void;
}

export function useScope(block: Block): Scope {
  const shape = shapeOf(block);
  const [channelText, keepChannels] = useKept("ch");
  const channels = useMemo(
    () => channelsOfAddress(channelText ?? "0", shape.channels),
    [channelText, shape.channels],
  );
  const [triggerText, keepTrigger] = useKept("trig");
  const [capture, setCapture] = useState(nothingCaptured);
  const trigger = parseTrigger(triggerText) ?? proposedTrigger(String(channels[0] ?? 0), capture.first);
  const reading = useReading(block, shape, channels, capture.mode, (traces, when) => {
    setCapture((before) => captured(before, traces, trigger, when));
  });
  const [nsText, setNs] = useKept("ns");
  const [stack, keepStack] = useKept("stack");
  return {
    block,
    shape,
    channels,
    setChannels: (chosen) => keepChannels(formatChannels(chosen)),
    colourOf: (channel) => Math.max(0, channels.indexOf(channel)),
    reading,
    capture,
    setMode: (mode) => setCapture((before) => ({ ...before, mode })),
    trigger,
    setTrigger: (next) => keepTrigger(formatTrigger(next)),
    triggerOn: (key) => keepTrigger(formatTrigger(proposedTrigger(key, capture.first))),
    ...useVertical(capture, channels, () => setCapture(refitted)),
    ...useView(capture.shown?.[0]?.samples.length ?? 0),
    nsPerSample: nsOf(nsText),
    setNs,
    isStacked: stack === "1",
    setStacked: (on) => keepStack(on ? "1" : null),
  };
}

function shapeOf(block: Block): ScopeShape {
  return {
    channels: sizeOf(block, "channels") || usualChannels,
    analog: sizeOf(block, "analog"),
    digital: sizeOf(block, "digital"),
  };
}

function useReading(
  block: Block,
  shape: ScopeShape,
  channels: readonly number[],
  mode: Mode,
  onTraces: (traces: readonly Trace[], when: When) => void,
): Reading<readonly Trace[]> {
  const isAsking = mode !== "frozen" && channels.length > 0;
  const reading = usePolled(
    isAsking ? () => getTraces(server, block.name, shape, channels) : null,
    tracesMs,
    [block.name, channels.join(), JSON.stringify(shape), isAsking],
  );
  useEffect(() => {
    const { value } = reading;
    if (value !== null) {
      onTraces(value, reading);
    }
  }, [reading]);
  return reading;
}

type Verticals = Pick<Scope, "settings" | "set" | "verticalOf" | "fit">;

function useVertical({ first }: Capture, channels: readonly number[], refit: () => void): Verticals {
  const [text, keep] = useKept("v");
  const settings = useMemo(() => parseSettings(text ?? ""), [text]);
  const usual = useMemo(() => fitted(usualEnvelope(first, channels)), [first, channels]);
  return {
    settings,
    set: (key, setting) => keep(formatSettings(new Map([...settings, [key, setting]]))),
    verticalOf: (key) => ({ ...usual, ...settings.get(key) }),
    fit: () => {
      keep(null);
      refit();
    },
  };
}

/** So few samples can be looked at. */
const leastSamples = 8;

function useView(samples: number): Pick<Scope, "view" | "setView"> {
  const [text, keep] = useKept("x");
  const last = Math.max(1, samples - 1);
  const view = useMemo(() => {
    const [from = NaN, to = NaN] = (text ?? "").split(",").map(Number);
    return limited(from < to ? [from, to] : null, 0, last, leastSamples) ?? ([0, last] as const);
  }, [text, last]);
  const setView = (next: View | null): void => {
    const span: Span = limited(next, 0, last, leastSamples);
    keep(span === null ? null : span.map((sample) => sample.toFixed(2)).join(","));
  };
  return { view, setView };
}
