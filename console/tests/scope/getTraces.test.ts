import { describe, expect, it } from "vitest";
import { getTraces, type Trace } from "../../src/server/scope";
import type { Answerer } from "../../src/server/Server";

class FakeScope implements Answerer {
  readonly asked: object[] = [];

  constructor(private readonly traces: string) {}

  async ask(route: string, query: object): Promise<string> {
    expect(route).toBe("scope1");
    this.asked.push(query);
    return "cmd" in query && query.cmd === "set_channel" ? '[{"response": true}]' : this.traces;
  }
}

const shape = { channels: 4, analog: 1, digital: 2 };
const read = (traces: string, chosen: number[], of = shape): Promise<Trace[]> =>
  getTraces(new FakeScope(traces), "scope1", of, chosen);
const short = (traces: readonly Trace[]): unknown[] =>
  traces.map(({ channel, isDigital, index, samples }) => [channel, isDigital ? "d" : "a", index, ...samples]);

describe("traces", () => {
  it("are asked for right behind their channels", async () => {
    const server = new FakeScope("[]");
    await getTraces(server, "scope1", shape, []);
    expect(server.asked).toEqual([{ cmd: "set_channel", ch_enable: [0, 0, 0, 0] }, { cmd: "require_data" }]);
    const other = new FakeScope('[{"data":[]},{"data":[]},{"data":[]}]');
    await getTraces(other, "scope1", shape, [2]);
    expect(other.asked[0]).toEqual({ cmd: "set_channel", ch_enable: [0, 0, 1, 0] });
  });

  it("are those of each channel in ascending order, analog before digital", async () => {
    const first = '{"data":[999,1e+06]},{"data":[0,1]},{"data":[1,0]}';
    const text = `[${first},{"data":[-5,0.5]},{"data":[0,0]},{"data":[1,1]}]`;
    expect(short(await read(text, [3, 1]))).toEqual([
      [1, "a", 0, 999, 1_000_000],
      [1, "d", 0, 0, 1],
      [1, "d", 1, 1, 0],
      [3, "a", 0, -5, 0.5],
      [3, "d", 0, 0, 0],
      [3, "d", 1, 1, 1],
    ]);
  });

  it("are read though their shape isn't known", async () => {
    const unknown = { channels: 0, analog: 0, digital: 0 };
    const traces = await read('[{"data":[7]},{"data":[1]}]', [5], unknown);
    expect(short(traces)).toEqual([[5, "a", 0, 7], [5, "d", 0, 1]]);
    expect(await read("[]", [], unknown)).toEqual([]);
  });

  it("are read though the server's commas are missing between analog ones", async () => {
    const text = '[{"data":[1]}{"data":[2]},{"data":[3]}{"data":[4]}]';
    expect(short(await read(text, [0, 1], { channels: 2, analog: 2, digital: 0 }))).toEqual([
      [0, "a", 0, 1],
      [0, "a", 1, 2],
      [1, "a", 0, 3],
      [1, "a", 1, 4],
    ]);
  });

  it("are read though the server has a comma too many before digital ones alone", async () => {
    const text = '[,{"data":[1]},,{"data":[0]}]';
    expect(short(await read(text, [0, 1], { channels: 2, analog: 0, digital: 1 }))).toEqual([
      [0, "d", 0, 1],
      [1, "d", 0, 0],
    ]);
  });
});

describe("an answer that can't be traces", () => {
  it.each([
    ["", [0], "No block answers for scope1"],
    ["nonsense", [0], "is no JSON"],
    ["{}", [0], "where a list should be"],
    ["[1,2,3]", [0], "where an object should be"],
    ['[{"data":[1]}]', [0], "scope1 answers 1 traces where 3 were chosen: another console"],
    ['[{"data":["x"]},{"data":[1]},{"data":[1]}]', [0], "where a number should be"],
    ['[{"data":[1,2]},{"data":[1]},{"data":[1]}]', [0], "different lengths: 2 and 1"],
  ])("is refused: %s", async (text, chosen, message) => {
    await expect(read(text, chosen)).rejects.toThrow(message);
  });
});
