import { describe, expect, it } from "vitest";
import { getDumpCounts } from "../../src/server/dumpCounts";

const answer =
  '[{"response": true,"status":1,"recorded":9,"discarded":1,"failed":2,"dropped":3,"overwritten":4,' +
  '"run_start":1,"paused_running_time":0}]';

describe("What became of a recorder's records", () => {
  it.each([
    ["dumper", "dumper1", { cmd: "get_dump_counts" }],
    ["oscilloscope", "dumper1", { cmd: "get_dump_counts" }],
    ["rate_counters_sink", "query_by_json", { path: "p/d", args: [{ cmd: "get_dump_counts" }] }],
  ])("is asked of a %s by %s", async (type, route, query) => {
    const asked: unknown[] = [];
    const server = { ask: async (...question: unknown[]) => (asked.push(question), answer) };
    const counts = await getDumpCounts(server, { type, name: "dumper1", path: "p/d" });
    expect(counts).toEqual({ status: "recording", recorded: 9, failed: 2, dropped: 3, overwritten: 4 });
    expect(asked).toEqual([[route, query]]);
  });

  it.each(["", "[]", "[{}]", '[{"recorded":1,"failed":"2"}]', "7"])("is refused when it is %s", async (text) => {
    const server = { ask: () => Promise.resolve(text) };
    await expect(getDumpCounts(server, { type: "dumper", name: "d", path: "" })).rejects.toThrow(/losses in d/);
  });
});
