import { describe, expect, it } from "vitest";
import { parseRunInfo, sendRunCommand, startRun } from "../../src/server/runControl";

const info = (id: string, name = "dumper1"): string =>
  `{"status":1,"name": "${name}","event_rate":12.5,"id":${id},"stored_events":7,"running_time":3.25,"used_space":14}`;

describe("What a dumper says of its run", () => {
  it("is read whatever its id is, which stands there without quotes", () => {
    for (const id of ["12", "", "night 3", "2026-11-21_001", 'a"b', "x,y", "a\\b", "true"]) {
      expect(parseRunInfo(`[${info(id)}]`)).toEqual([
        { name: "dumper1", status: "recording", id, eventRate: 12.5, storedEvents: 7, runningTime: 3.25, usedSpace: 14 },
      ]);
    }
  });

  it("is read of several dumpers", () => {
    const runs = parseRunInfo(`[${info("a,b", "one")},${info("c", "two")}]`);
    expect(runs.map(({ name, id }) => [name, id])).toEqual([["one", "a,b"], ["two", "c"]]);
  });

  it("may be that of no dumper", () => {
    expect(parseRunInfo("[]")).toEqual([]);
  });

  it("has a state by number, and one for numbers that nobody knows", () => {
    const stateOf = (status: string): string => parseRunInfo(`[${info("1").replace('"status":1', `"status":${status}`)}]`)[0]!.status;
    expect(["0", "1", "2", "3", "-1", '"1"'].map(stateOf)).toEqual(["stopped", "recording", "paused", "unknown", "unknown", "unknown"]);
  });

  it("is refused with a reason when it is something else", () => {
    for (const text of ["", "{}", "[1]", "[{]"]) {
      expect(() => parseRunInfo(text)).toThrow(/the run/);
    }
  });

  it("is read in no time whatever comes", () => {
    expect(() => parseRunInfo('[{"event_rate":1,"id":'.repeat(20_000))).toThrow(/no JSON/);
  });
});

describe("Run control", () => {
  const answering = (text: string): { ask: () => Promise<string> } => ({ ask: () => Promise.resolve(text) });

  it("explains that the folder of a run exists", async () => {
    await expect(startRun(answering('[{"response": "Existing Folder"}]'), "12")).rejects.toThrow(
      'There is a folder of run 12 already ("Existing Folder"): choose another id.',
    );
  });

  it("passes on what else the server says", async () => {
    await expect(startRun(answering('[{"response": "No"}]'), "12")).rejects.toThrow("No");
    await expect(sendRunCommand(answering(""), "stop_dump")).rejects.toThrow(/No block answers for run control/);
    await expect(sendRunCommand(answering('[{"response": true}]'), "stop_dump")).resolves.toBeUndefined();
  });
});
