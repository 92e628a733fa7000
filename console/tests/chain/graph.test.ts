import { expect, test } from "vitest";
import { graphOf } from "../../src/views/chain/graph";
import { block } from "./chainOf";

test("no blocks make no graph", () => {
  expect(graphOf([])).toEqual({ nodes: [], edges: [] });
});

test("a board stands behind the blocks, once for all that name it", () => {
  const sources = [block("source", "s0", [], "B0"), block("source", "s1", [], "B0")];
  const graph = graphOf([...sources, block("hv", "h", [], "B0")]);
  expect(graph.nodes.map((node) => node.name)).toEqual(["s0", "s1", "h", "B0"]);
  expect(graph.nodes[3]!.block).toBeNull();
  expect(graph.edges).toEqual([
    { from: 3, to: 0, pin: -1, input: -1 },
    { from: 3, to: 1, pin: -1, input: -1 },
    { from: 3, to: 2, pin: -1, input: -1 },
  ]);
});

test("links become edges with their output and input", () => {
  const graph = graphOf([block("tee", "t"), block("sorter", "x", ["t:1", "t:0"])]);
  expect(graph.edges).toEqual([
    { from: 0, to: 1, pin: 1, input: 0 },
    { from: 0, to: 1, pin: 0, input: 1 },
  ]);
});

test("an input that is linked to nothing, to itself or to a later block is counted as unlinked", () => {
  const graph = graphOf([block("tee", "t", ["", "t:0", "later:0"]), block("tee", "later")]);
  expect(graph.nodes[0]!.unlinked).toBe(3);
  expect(graph.edges).toEqual([]);
});

test("of two blocks of one name the first is linked to, and their keys differ", () => {
  const graph = graphOf([block("tee", "t"), block("tee", "t"), block("spectrum", "s", ["t:0"])]);
  expect(graph.edges).toEqual([{ from: 0, to: 2, pin: 0, input: 0 }]);
  expect(graph.nodes.map((node) => node.key)).toEqual(["chain/t", "chain/t #2", "chain/s"]);
});

test("a block that is called like a board isn't taken for it", () => {
  const graph = graphOf([block("source", "B0", [], "B0")]);
  expect(graph.edges).toEqual([{ from: 1, to: 0, pin: -1, input: -1 }]);
});

test("a board whose name is no text is left out", () => {
  const odd = { ...block("source", "s"), shape: { board: 7 } };
  expect(graphOf([odd]).nodes).toHaveLength(1);
});
