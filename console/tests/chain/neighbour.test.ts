import { expect, test } from "vitest";
import { graphOf } from "../../src/views/chain/graph";
import { layOut } from "../../src/views/chain/layout";
import { neighbour } from "../../src/views/chain/neighbour";
import { block } from "./chainOf";

// 0 feeds 1, 2 and 3, from top to bottom 2, 1, 3; 4 stands alone; 5 is the board of 0.
const graph = graphOf([
  block("source", "s", [], "B"),
  block("x", "a", ["s:1"]),
  block("x", "b", ["s:0"]),
  block("x", "c", ["s:2"]),
  block("x", "alone"),
]);
const layout = layOut(graph);

test.each([
  [1, "ArrowLeft", 0],
  [0, "ArrowLeft", 5],
  [5, "ArrowLeft", null],
  [5, "ArrowRight", 0],
  [0, "ArrowRight", 2],
  [1, "ArrowRight", null],
  [1, "ArrowUp", 2],
  [1, "ArrowDown", 3],
  [2, "ArrowUp", null],
  [0, "ArrowDown", 4],
  [0, "x", null],
] as [number, string, number | null][])("from block %i %s leads to %s", (node, key, next) => {
  expect(neighbour(graph, layout, node, key)).toBe(next);
});
