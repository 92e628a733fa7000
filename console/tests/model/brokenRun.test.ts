import { describe, expect, it } from "vitest";
import { idOn, isBroken } from "../../src/model/brokenRun";
import type { RunInfo } from "../../src/server/runControl";

const run = (status: RunInfo["status"], id: string, storedEvents = 5, runningTime = 2): RunInfo => ({
  name: "dumper1", status, id, storedEvents, runningTime, eventRate: 0, usedSpace: 0,
});
const fresh = run("stopped", "", 0, 0);

describe("A run that was broken off", () => {
  it("is one of which its server knows nothing any more", () => {
    expect(isBroken("a", [fresh])).toBe(true);
    expect(isBroken("a", [fresh, fresh])).toBe(true);
    expect(isBroken("a", [])).toBe(true);
  });

  it.each([
    ["goes on", [run("recording", "a")]],
    ["goes on in the second dumper", [fresh, run("recording", "a")]],
    ["was paused", [run("paused", "a")]],
    ["was stopped", [run("stopped", "a")]],
    ["was stopped before it had any event", [run("stopped", "a", 0, 0)]],
    ["was followed by another", [run("recording", "b", 0, 0)]],
    ["was followed by another that was stopped", [run("stopped", "b")]],
  ])("is not one that %s", (_, now) => {
    expect(isBroken("a", now)).toBe(false);
  });

  it("was recorded or paused when it was last asked for", () => {
    expect(idOn([fresh, run("recording", "b")])).toBe("b");
    expect(idOn([run("paused", "a")])).toBe("a");
    expect(idOn([run("stopped", "a"), fresh])).toBeNull();
    expect(idOn([])).toBeNull();
  });
});
