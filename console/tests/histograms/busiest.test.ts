import { describe, expect, it, vi } from "vitest";

vi.mock("../../src/app/state", () => ({ server: null }));
const { findBusiest } = await import("../../src/views/histograms/busiest");
const { Answers, block } = await import("./blocks");

describe("the busiest channel", () => {
  it("is settled when it has counted a hundred", async () => {
    const server = new Answers({ "chain/a": [[1, 2], [50, 49], [3, 3]], "chain/b": [[0, 1], [70, 30]] });
    expect(await findBusiest(server, block("a", 3, 2))).toEqual({ channel: 1, isSettled: false });
    expect(await findBusiest(server, block("b", 2, 2))).toEqual({ channel: 1, isSettled: true });
    expect(server.asked).toEqual([[0, 1, 2], [0, 1]]);
  });

  it("isn't known while nothing is counted", async () => {
    expect(await findBusiest(new Answers({ "chain/a": [[0, 0], [0, 0]] }), block("a", 2, 2))).toBeNull();
  });

  it("is searched for among the first, where all would be more than a million bins", async () => {
    const server = new Answers({ "chain/a": [[1]], "chain/b": [[1]], "chain/c": [[1]] });
    await findBusiest(server, block("a", 64, 65_536));
    await findBusiest(server, block("b", 4, 2_000_000));
    await findBusiest(server, block("c", 0, 0));
    expect(server.asked.map((channels) => (channels as number[]).length)).toEqual([15, 1, 1]);
  });
});
