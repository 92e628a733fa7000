import { describe, expect, it } from "vitest";
import { brokenRun } from "../../src/model/brokenRun";
import type { RunInfo } from "../../src/server/runControl";

const run = (status: RunInfo["status"], id: string, storedEvents = 5, runningTime = 2): RunInfo => ({
  name: "dumper1", status, id, storedEvents, runningTime, eventRate: 0, usedSpace: 0,
});
const fresh = run("stopped", "", 0, 0);

describe("A run that was broken off", () => {
  it("was recorded or paused, and its server knows nothing of it any more", () => {
    expect(brokenRun([run("recording", "a")], [fresh])).toBe("a");
    expect(brokenRun([run("paused", "a")], [fresh])).toBe("a");
    expect(brokenRun([run("stopped", ""), run("recording", "b")], [fresh, fresh])).toBe("b");
    expect(brokenRun([run("recording", "a")], [])).toBe("a");
  });

  it.each([
    ["goes on", [run("recording", "a")], [run("recording", "a")]],
    ["was paused", [run("recording", "a")], [run("paused", "a")]],
    ["was stopped", [run("recording", "a")], [run("stopped", "a")]],
    ["was stopped before it had any event", [run("recording", "a", 0, 0)], [run("stopped", "a", 0, 0)]],
    ["was followed by another", [run("recording", "a")], [run("recording", "b", 0, 0)]],
    ["was followed by another that was stopped", [run("recording", "a")], [run("stopped", "b")]],
    ["was over before", [run("stopped", "a")], [fresh]],
    ["wasn't seen", [], [fresh]],
  ])("is not one that %s", (_, before, after) => {
    expect(brokenRun(before, after)).toBeNull();
  });
});
