import { describe, expect, it } from "vitest";
import { getBoardValues, getReadOnlyNames, switchBoard } from "../../src/server/hv";
import { Unreachable } from "../../src/server/RouteSocket";
import type { Answerer } from "../../src/server/Server";
import { boardsOf, readBoards } from "../../src/views/hv/boards";
import { consequencesOf, failureOf, titleOf } from "../../src/views/hv/order";

/** Answers by path and command, and notes what it was asked. */
class FakeServer implements Answerer {
  readonly asked: { route: string; query: object }[] = [];

  constructor(private readonly answers: Record<string, string | Error>) {}

  async ask(route: string, query: object): Promise<string> {
    this.asked.push({ route, query });
    const { path, args } = query as { path: string; args: [{ cmd: string; param?: string }] };
    const answer = this.answers[`${path} ${args[0].param ?? args[0].cmd}`] ?? "";
    if (answer instanceof Error) {
      throw answer;
    }
    return answer;
  }
}

const path = "Hardware/B1";

describe("a board's values", () => {
  it("are asked for by its path", async () => {
    const server = new FakeServer({ [`${path} all`]: '{"response":"ok","a":on}' });
    const { values } = await getBoardValues(server, path, "all");
    expect(values).toEqual([{ name: "a", isArray: false, values: ["on"] }]);
    expect(server.asked).toEqual([
      { route: "query_by_json", query: { path, args: [{ cmd: "get_all_ch_values", param: "all" }] } },
    ]);
  });

  it("are missed where no block answers, and where the block has no board", async () => {
    const nobody = new FakeServer({});
    await expect(getBoardValues(nobody, path, "all")).rejects.toThrow("No block answers for Hardware/B1");
    const error = '{"response":"error", "reason":"Board not connected"}';
    const server = new FakeServer({ [`${path} all`]: error });
    await expect(getBoardValues(server, path, "all")).rejects.toThrow("has no board (Board not connected)");
  });

  it("tell which can't be written", async () => {
    const server = new FakeServer({ [`${path} read_only`]: '{"data":[{"HVState":[off],{"Temperature":36.6}]}' });
    expect(await getReadOnlyNames(server, path)).toEqual(new Set(["HVState", "Temperature"]));
  });

  it("tell nothing of what can be written when the answer can't be read whole", async () => {
    const cut = '{"data":[{"HVState":[off],{"Temperature":36.6}';
    for (const answer of ["nonsense", cut, '{"data":[{"a":[1,2},{"b":5}]}']) {
      const server = new FakeServer({ [`${path} read_only`]: answer });
      await expect(getReadOnlyNames(server, path)).rejects.toThrow("What Hardware/B1 answers can't be read whole");
    }
    const none = new FakeServer({ [`${path} read_only`]: '{"data":[]}' });
    expect(await getReadOnlyNames(none, path)).toEqual(new Set());
  });
});

describe("switching a board", () => {
  it("ends with its answer, and reads nothing behind it", async () => {
    const server = new FakeServer({});
    await switchBoard(server, path, true);
    await switchBoard(server, path, false);
    expect(server.asked.map(({ query }) => query)).toEqual([
      { path, args: [{ cmd: "hv_global_on" }] },
      { path, args: [{ cmd: "hv_global_off" }] },
    ]);
  });

  it("fails with what a block says where it should say nothing", async () => {
    const server = new FakeServer({ [`${path} hv_global_off`]: "no", [`${path} all`]: '{"response":"ok",}' });
    await expect(switchBoard(server, path, false)).rejects.toThrow("Hardware/B1 answers no");
  });
});

describe("boards", () => {
  const block = (at: string): Parameters<typeof boardsOf>[0][number] => {
    return { type: "hv", name: "x", path: at, links: [], outputs: 0, shape: {} };
  };

  it("are those of the blocks' paths, each once", () => {
    const blocks = [block("Hardware/B1"), block("Hardware/B2"), block("Hardware/B1"), block("processing/0/hv3")];
    expect(boardsOf(blocks)).toEqual([
      { name: "B1", path: "Hardware/B1" },
      { name: "B2", path: "Hardware/B2" },
      { name: "processing/0/hv3", path: "processing/0/hv3" },
    ]);
  });

  const boards = [{ name: "B1", path }, { name: "B2", path: "Hardware/B2" }];

  it("are read though one of them fails", async () => {
    const server = new FakeServer({ [`${path} all`]: '{"response":"ok",}' });
    const [good, bad] = await readBoards(server, boards);
    expect(good).toEqual({ board: boards[0], answer: { values: [], complaints: [] }, fault: null });
    expect(bad?.answer).toBeNull();
    expect(bad?.fault).toContain("No block answers for Hardware/B2");
  });

  it("all fail when the server can't be reached", async () => {
    const server = new FakeServer({ [`${path} all`]: new Unreachable("no connection") });
    await expect(readBoards(server, boards)).rejects.toThrow("no connection");
  });

  it("are named before they are switched", () => {
    const all = { on: true, boards, isForAll: true };
    expect(titleOf(all)).toBe("Switch the high voltage of all 2 boards on?");
    expect(consequencesOf(all)).toContain("B1, B2");
    const one = { on: false, boards: boards.slice(1), isForAll: false };
    expect(titleOf(one)).toBe("Switch the high voltage of B2 off?");
    expect(consequencesOf(one)).toContain("The channels of B2 go down to 0 V.");
    expect(failureOf(one, "no answer.")).toBe("“off” for B2: no answer.");
  });
});
