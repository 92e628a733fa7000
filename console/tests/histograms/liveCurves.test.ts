import { describe, expect, it } from "vitest";
import { askFor } from "../../src/views/histograms/liveCurves";
import { Answers, block } from "./blocks";

const [a, b] = [block("a", 4, 2), block("b", 4, 2)];

describe("the shown channels", () => {
  it("are asked for with one query for each block", async () => {
    const server = new Answers({ "chain/a": [[1, 2], [3, 4]], "chain/b": [[-1, 0]] });
    const { curves, faults } = await askFor(server, [{ block: a, channels: [0, 3] }, { block: b, channels: [2] }]);
    expect(server.asked).toEqual([[0, 3], [2]]);
    expect(curves.map(({ key, label, counts }) => [key, label, [...(counts as Uint32Array)]])).toEqual([
      ["chain/a@0", "a · ch 0", [1, 2]],
      ["chain/a@3", "a · ch 3", [3, 4]],
      ["chain/b@2", "b · ch 2", [4294967295, 0]],
    ]);
    expect(faults).toEqual([]);
  });

  it("are shown as far as they can be read", async () => {
    const server = new Answers({ "chain/a": "[{", "chain/b": [[1, 1]] });
    const { curves, faults } = await askFor(server, [{ block: a, channels: [0] }, { block: b, channels: [2, 9] }]);
    expect(curves.map(({ label }) => label)).toEqual(["b · ch 2"]);
    expect(faults[0]).toContain("chain/a");
    expect(faults[1]).toBe("b has no channel 9: choose lower ones.");
  });

  it("fail when none of them can be read", async () => {
    const server = new Answers({});
    await expect(askFor(server, [{ block: a, channels: [0] }])).rejects.toThrow("No block answers for chain/a");
    const none = new Answers({ "chain/a": [] });
    await expect(askFor(none, [{ block: a, channels: [7] }])).rejects.toThrow("no channel 7");
  });
});
