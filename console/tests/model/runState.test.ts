import { describe, expect, it } from "vitest";
import { leading, onWithoutEvents } from "../../src/model/runState";
import type { RunStatus } from "../../src/server/runControl";

describe("What all dumpers together do", () => {
  const of = (...statuses: RunStatus[]): RunStatus | undefined =>
    leading(statuses.map((status) => ({ status })))?.status;

  it("is told by one that records, else by one that is paused, else by one that doesn't say", () => {
    expect(of("stopped", "paused", "recording")).toBe("recording");
    expect(of("unknown", "stopped", "paused")).toBe("paused");
    expect(of("stopped", "unknown")).toBe("unknown");
    expect(of("stopped", "stopped")).toBe("stopped");
    expect(of()).toBeUndefined();
  });
});

describe("What is recorded without events", () => {
  const recorder = (type: string, status: RunStatus) => ({ type, counts: { status } });
  const scope = recorder("oscilloscope", "recording");
  const rates = recorder("rate_counters_sink", "paused");

  it("is what goes on while no dumper does", () => {
    const recorders = [recorder("dumper", "stopped"), scope, rates, recorder("oscilloscope", "stopped")];
    expect(onWithoutEvents(recorders)).toEqual([scope, rates]);
  });

  it("is nothing while a dumper records, whatever else does", () => {
    expect(onWithoutEvents([recorder("dumper", "recording"), scope])).toEqual([]);
    expect(onWithoutEvents([recorder("dumper", "stopped")])).toEqual([]);
  });
});
