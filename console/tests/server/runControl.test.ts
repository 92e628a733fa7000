import { describe, expect, it } from "vitest";
import { parseRunInfo, resumeRun, sendRunCommand } from "../../src/server/runControl";

const info = (id: string, name = "dumper1"): string =>
  `{"status":1,"name": "${name}","event_rate":12.5,"id":${id},"stored_events":7,` +
  `"running_time":3.25,"used_space":14}`;

describe("What a dumper says of its run", () => {
  it("is read whatever its id is, which stands there without quotes", () => {
    for (const id of ["12", "", "night 3", "2026-11-21_001", 'a"b', "x,y", "a\\b", "true"]) {
      expect(parseRunInfo(`[${info(id)}]`)).toEqual([
        {
          name: "dumper1", status: "recording", id,
          eventRate: 12.5, storedEvents: 7, runningTime: 3.25, usedSpace: 14,
        },
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
    const infoOf = (status: string): string => info("1").replace('"status":1', `"status":${status}`);
    const stateOf = (status: string): string => parseRunInfo(`[${infoOf(status)}]`)[0]!.status;
    expect(["0", "1", "2", "3", "-1", '"1"'].map(stateOf)).toEqual([
      "stopped", "recording", "paused", "unknown", "unknown", "unknown",
    ]);
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

  interface Scripted {
    ask: (route: string, query: object) => Promise<string>;
    asked: object[];
  }
  const scripted = (...answers: string[]): Scripted => {
    const asked: object[] = [];
    return { asked, ask: (_, query) => (asked.push(query), Promise.resolve(answers[asked.length - 1]!)) };
  };
  const state = (...statuses: number[]): string =>
    `[${statuses.map((status) => info("7").replace('"status":1', `"status":${status}`)).join(",")}]`;
  const done = '[{"response": true}]';

  it("goes on only with a paused run, as it would write over the files of one that ended", async () => {
    const paused = scripted(state(2, 2), done);
    await resumeRun(paused);
    expect(paused.asked).toEqual([{ cmd: "get_run_info" }, { cmd: "restart_dump" }]);
    for (const other of [state(0), state(2, 0), state(2, 1), state()]) {
      const ended = scripted(other, done);
      await expect(resumeRun(ended)).rejects.toThrow(/write over its files/);
      expect(ended.asked).toHaveLength(1);
    }
  });

  it("passes on what else the server says", async () => {
    await expect(sendRunCommand(answering(""), "stop_dump")).rejects.toThrow(/No block answers for run control/);
    await expect(sendRunCommand(answering('[{"response": true}]'), "stop_dump")).resolves.toBeUndefined();
  });
});
