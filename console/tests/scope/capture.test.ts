import { describe, expect, it } from "vitest";
import { type Capture, captured, type Mode, nothingCaptured, refitted, type When } from "../../src/views/scope/capture";
import { areAllZero, envelopeOf, keyOf, labelOf, sameTraces, usualEnvelope } from "../../src/views/scope/traces";
import {
  crossingIn,
  crossingOf,
  formatTrigger,
  parseTrigger,
  proposedTrigger,
} from "../../src/views/scope/trigger";
import { analogOf, digitalOf } from "./traceOf";

const trigger = { key: "0", level: 50, isRising: true };
const flat = [analogOf(0, 1, 2, 1)];
const pulse = [analogOf(0, 1, 2, 90)];
const other = [analogOf(0, 1, 80, 3)];

/** The wall clock is another than the one that ages are told by. */
const whenOf = (at: number): When => ({ at, heardAt: at - 500 });

/** What a mode makes of readings, a second apart. */
function after(mode: Mode, ...readings: (typeof flat)[]): Capture {
  return readings.reduce<Capture>(
    (before, traces, i) => captured(before, traces, trigger, whenOf(1000 * (i + 1))),
    { ...nothingCaptured, mode },
  );
}

describe("a screen that runs", () => {
  it("shows every waveform, and where it triggers", () => {
    expect(after("run", pulse, flat)).toMatchObject({ mode: "run", shown: flat, shownAt: 2000, crossing: -1 });
    expect(after("run", flat, pulse)).toMatchObject({ shown: pulse, crossing: 2 });
  });

  it("knows since when nothing new came", () => {
    expect(after("run", flat, pulse, pulse, pulse)).toMatchObject({ changedAt: 1500, shownAt: 4000 });
  });

  it("keeps the first five waveforms of each channel for its scale, until it fits what is shown", () => {
    const both = [analogOf(0, 1, 2, 33), analogOf(1, 5, 6)];
    const many = after("run", pulse, flat, pulse, pulse, flat, pulse, both);
    expect(many.first.get("0")).toEqual([pulse[0], flat[0], pulse[0], flat[0], pulse[0]]);
    expect(many.first.get("1")).toEqual([both[1]]);
    expect([...refitted(after("run", pulse, flat)).first.values()]).toEqual([Array(5).fill(flat[0])]);
  });

  it("has a scale for the middle one of them, or for all that it was told to fit", () => {
    const many = after("run", flat, pulse, other, flat, other, pulse);
    expect(usualEnvelope(many.first, [0])).toEqual({ low: 1, high: 80 });
    expect(usualEnvelope(refitted(many).first, [0])).toEqual({ low: 1, high: 90 });
    expect(usualEnvelope(many.first, [1])).toBeNull();
  });

  it("waits with its scale for a channel that had no waveform, whose samples are all 0", () => {
    expect([...after("run", [analogOf(0, 0, 0, 0)], pulse).first.values()]).toEqual([pulse]);
    expect(refitted(after("run", [analogOf(0, 0, 0, 0)])).first.size).toBe(0);
  });
});

describe("a triggered screen", () => {
  it("holds the last waveform that crossed the level", () => {
    expect(after("triggered", pulse, flat, flat)).toMatchObject({ shown: pulse, shownAt: 1000 });
    expect(after("triggered", pulse, flat, other)).toMatchObject({ shown: other, shownAt: 3000, crossing: 1 });
  });

  it("shows nothing before the first, and yet knows what a level would suit", () => {
    expect(after("triggered", flat, flat)).toMatchObject({ shown: null, latest: flat });
    expect(after("triggered", flat).first.get("0")).toEqual(flat);
  });
});

describe("a single shot", () => {
  it("freezes with the first waveform that crosses", () => {
    expect(after("single", flat, pulse, other)).toMatchObject({ mode: "frozen", shown: pulse, shownAt: 2000 });
  });

  it("waits for a new one, not for that which is there already", () => {
    const waiting: Capture = { ...after("run", pulse), mode: "single" };
    const again = captured(waiting, [analogOf(0, 1, 2, 90)], trigger, whenOf(9000));
    expect(again).toMatchObject({ mode: "single", shownAt: 1000 });
    expect(captured(again, other, trigger, whenOf(9500))).toMatchObject({ mode: "frozen", shown: other });
  });
});

it("keeps what is frozen", () => {
  expect(captured({ ...after("run", flat), mode: "frozen" }, pulse, trigger, whenOf(5000))).toMatchObject({ shown: flat });
});

describe("a crossing", () => {
  it("is the first sample beyond the level, by its direction", () => {
    const samples = Float64Array.from([0, 10, 20, 10, 0]);
    expect(crossingOf(samples, 15, true)).toBe(2);
    expect(crossingOf(samples, 10, true)).toBe(1);
    expect(crossingOf(samples, 15, false)).toBe(3);
    expect(crossingOf(samples, 0, false)).toBe(4);
    expect(crossingOf(samples, 0.5, true)).toBe(1);
  });

  it("is none where the level isn't crossed", () => {
    const samples = Float64Array.from([5, 5, 5]);
    expect(crossingOf(samples, 5, true)).toBe(-1);
    expect(crossingOf(samples, 9, false)).toBe(-1);
    expect(crossingOf(Float64Array.from([9]), 5, true)).toBe(-1);
    expect(crossingOf(new Float64Array(0), 5, true)).toBe(-1);
    expect(crossingOf(Float64Array.from([NaN, NaN]), 5, true)).toBe(-1);
  });

  it("is of the trigger's trace alone", () => {
    const traces = [analogOf(0, 0, 100), digitalOf(0, 1, 0, 0, 1)];
    expect(crossingIn(traces, { key: "0d1", level: 0.5, isRising: true })).toBe(2);
    expect(crossingIn(traces, { key: "7", level: 0.5, isRising: true })).toBe(-1);
  });

  it("is kept in the address", () => {
    const falling = { key: "3d0", level: -12.5, isRising: false };
    expect(formatTrigger(falling)).toBe("3d0,-12.5,falling");
    expect(parseTrigger("3d0,-12.5,falling")).toEqual(falling);
    for (const text of [null, "", "3,x,rising", "3,1,up", "x,1,rising", "3,Infinity,rising"]) {
      expect(parseTrigger(text)).toBeNull();
    }
  });
});

describe("the trigger that is proposed", () => {
  const among = (...pulses: number[][]): unknown =>
    proposedTrigger("0", new Map([["0", pulses.map((samples) => analogOf(0, ...samples))]]));
  const proposed = (...samples: number[]): unknown => among(samples);

  it("is half way from the baseline to the peak, up or down", () => {
    expect(proposed(1000, 998, 1002, 1000, 2400, 1600, 1000)).toEqual({ key: "0", level: 1700, isRising: true });
    expect(proposed(1000, 998, 1002, 1000, 200, 600, 1000)).toEqual({ key: "0", level: 600, isRising: false });
  });

  it("is that of the middle one of a few pulses", () => {
    expect(among([0, 0, 0, 900], [0, 0, 0, 20], [0, 0, 0, 400])).toMatchObject({ level: 200 });
  });

  it("tells a small pulse on a high baseline", () => {
    expect(proposed(1e6, 1e6, 1e6, 1e6 + 20)).toEqual({ key: "0", level: 1_000_010, isRising: true });
    expect(proposed(0.3, 0.3, 0.3, 0.31)).toEqual({ key: "0", level: 0.305, isRising: true });
  });

  it("is between 0 and 1 of a digital trace, and 0 while nothing is known", () => {
    expect(proposedTrigger("0d1", new Map())).toEqual({ key: "0d1", level: 0.5, isRising: true });
    expect(proposedTrigger("0", new Map())).toEqual({ key: "0", level: 0, isRising: true });
    expect(proposed()).toEqual({ key: "0", level: 0, isRising: true });
  });
});

describe("traces", () => {
  it("have names", () => {
    expect(keyOf(analogOf(3))).toBe("3");
    expect(keyOf({ ...analogOf(3), index: 1 })).toBe("3.1");
    expect(labelOf(digitalOf(3, 0))).toBe("Ch 3d0");
  });

  it("are the same when all samples are", () => {
    expect(sameTraces([analogOf(0, 1, 2)], [analogOf(0, 1, 2)])).toBe(true);
    expect(sameTraces([analogOf(0, 1, 2)], [analogOf(0, 1, 3)])).toBe(false);
    expect(sameTraces([analogOf(0, 1, 2)], [analogOf(1, 1, 2)])).toBe(false);
    expect(sameTraces([analogOf(0, 1, 2)], [analogOf(0, 1)])).toBe(false);
    expect(sameTraces([analogOf(0, 1)], [])).toBe(false);
  });

  it("are all 0 before the first waveform", () => {
    expect(areAllZero([analogOf(0, 0, 0), digitalOf(0, 0, 0, 0)])).toBe(true);
    expect(areAllZero([analogOf(0, 0, 0), digitalOf(0, 0, 0, 1)])).toBe(false);
  });

  it("have an envelope of their analog samples", () => {
    expect(envelopeOf([analogOf(0, 7, 9), digitalOf(0, 0, 0, 1)])).toEqual({ low: 7, high: 9 });
    expect(envelopeOf([analogOf(0, 7, 9), analogOf(1, 8, 20)])).toEqual({ low: 7, high: 20 });
    expect(envelopeOf([digitalOf(0, 0, 1)])).toBeNull();
    expect(envelopeOf([])).toBeNull();
  });
});
