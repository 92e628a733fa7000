import { describe, expect, it } from "vitest";
import { Unreachable } from "../../src/server/RouteSocket";
import { IdTaken, startRun } from "../../src/server/startRun";

const scope = { type: "oscilloscope", name: "scope1", path: "" };
const dumper = { type: "dumper", name: "dumper1", path: "" };
const runs = (...states: number[]): string =>
  `[${states.map((state) => `{"status":${state},"name": "dumper1","event_rate":0,"id":7,"stored_events":0}`)}]`;
const counts = (state: number): string =>
  `[{"response": true,"status":${state},"recorded":0,"failed":0,"dropped":0,"overwritten":0}]`;
const done = '[{"response": true}]';

/** The answers to each of the questions, by their order; the last one counts for all that come later. */
function scripted(answers: Record<string, (string | Error)[]>) {
  const asked: object[] = [];
  const ask = async (_: string, query: { cmd?: string }): Promise<string> => {
    asked.push(query);
    const list = answers[query.cmd ?? ""] ?? [];
    const answer = list.length > 1 ? list.shift()! : (list[0] ?? "");
    if (answer instanceof Error) {
      throw answer;
    }
    return answer;
  };
  const started = (): number => asked.filter((query) => "run_id" in query).length;
  return { ask, asked, started };
}

describe("The start of a run", () => {
  it("is refused while a run is recorded or paused", async () => {
    for (const [state, word] of [[1, "recording"], [2, "paused"]] as const) {
      const busy = scripted({ get_run_info: [runs(0, state)], start_dump: [done] });
      await expect(startRun(busy, "8", null)).rejects.toThrow(`Run 7 is ${word}: stop it`);
      expect(busy.started()).toBe(0);
    }
  });

  it("is refused while waves are recorded, of which the dumpers know nothing", async () => {
    const busy = scripted({ get_run_info: [runs(0)], get_dump_counts: [counts(1)], start_dump: [done] });
    await expect(startRun(busy, "8", [dumper, scope])).rejects.toThrow("scope1 is recording: stop it");
    expect(busy.started()).toBe(0);
  });

  it("succeeds when events are recorded then, or waves alone", async () => {
    const events = scripted({
      get_run_info: [runs(0), runs(1)], get_dump_counts: [counts(0)], start_dump: [done],
    });
    await startRun(events, "8", [dumper, scope]);
    expect(events.asked).toContainEqual({ cmd: "start_dump", run_id: "8" });
    const waves = scripted({
      get_run_info: [runs(0)], get_dump_counts: [counts(0), counts(1)], start_dump: [done],
    });
    await startRun(waves, "8", [dumper, scope]);
    expect(waves.started()).toBe(1);
  });

  it("fails when nothing is recorded then, though the server says it is done", async () => {
    const nothing = scripted({ get_run_info: [runs(0)], get_dump_counts: [counts(0)], start_dump: [done] });
    const start = startRun(nothing, "8", [dumper, scope]);
    await expect(start).rejects.toThrow(/^Nothing is recorded of run 8: .*"enable_list".*"enable_mcs"/);
    await expect(start).rejects.toThrow(IdTaken);
    const empty = scripted({ get_run_info: ["[]"], start_dump: [done] });
    await expect(startRun(empty, "8", [])).rejects.toThrow(IdTaken);
  });

  it("doesn't fail where that isn't sure", async () => {
    for (const silence of ["", new Unreachable("gone", true)]) {
      const silent = scripted({ get_run_info: [runs(0)], get_dump_counts: [silence], start_dump: [done] });
      await startRun(silent, "8", [scope]);
      expect(silent.started()).toBe(1);
    }
    await startRun(scripted({ get_run_info: [runs(0)], start_dump: [done] }), "8", null);
    const lost = [runs(0), new Unreachable("gone", true)];
    await startRun(scripted({ get_run_info: lost, start_dump: [done] }), "8", []);
  });

  it("explains that the folder of a run exists", async () => {
    const refusing = scripted({ get_run_info: ["[]"], start_dump: ['[{"response": "Existing Folder"}]'] });
    const start = startRun(refusing, "12", null);
    await expect(start).rejects.toThrow(
      'There is a folder of run 12 already ("Existing Folder"): choose another id.',
    );
    await expect(start).rejects.toThrow(IdTaken);
  });

  it("passes on what else the server says", async () => {
    const refusing = scripted({ get_run_info: ["[]"], start_dump: ['[{"response": "No"}]'] });
    await expect(startRun(refusing, "12", null)).rejects.toThrow("Run 12 wasn't started: No");
  });
});
