import { describe, expect, it } from "vitest";
import { titleOf } from "../../src/model/title";
import type { RunInfo } from "../../src/server/runControl";

const run = (status: RunInfo["status"], id: string): RunInfo => ({
  name: "d", status, id, eventRate: 0, storedEvents: 0, runningTime: 0, usedSpace: 0,
});

describe("The window's title", () => {
  it.each([
    ["● run_7 · 12.3 k/s – korvax", run("recording", "run_7"), "12.3 k/s"],
    ["‖ run_7 paused · no data – korvax", run("paused", "run_7"), "no data"],
    ["12.3 k/s – korvax", run("stopped", "run_7"), "12.3 k/s"],
    ["no data – korvax", undefined, "no data"],
    ["⚠ not reached – korvax", run("recording", "run_7"), null],
  ])("is %s", (title, known, flow) => expect(titleOf(known, flow)).toBe(title));

  it("stays short whatever a run is called", () =>
    expect(titleOf(run("recording", "x".repeat(500)), "no data")).toBe(`● ${"x".repeat(29)}… · no data – korvax`));
});
