import { expect, test } from "vitest";
import { cornersOf, linesOf, nodeSize, pictureSize } from "../../src/views/chain/geometry";
import { graphOf } from "../../src/views/chain/graph";
import { layOut } from "../../src/views/chain/layout";
import { block } from "./chainOf";

test("an empty picture has a size", () => {
  expect(pictureSize({ places: [], layers: 0, rows: 0 })).toEqual({ width: 198, height: 96 });
});

test("every box lies within the picture", () => {
  const layout = layOut(graphOf([block("tee", "t", [], "B"), block("x", "a", ["t:0"]), block("x", "b", ["t:1"])]));
  const size = pictureSize(layout);
  for (const { x, y } of cornersOf(layout)) {
    expect(x).toBeGreaterThan(0);
    expect(y).toBeGreaterThan(0);
    expect(x + nodeSize.width).toBeLessThan(size.width);
    expect(y + nodeSize.height).toBeLessThan(size.height);
  }
});

test.each([1, 2, 3, 40])("lines to %i inputs of a block end in their order, within its side", (inputs) => {
  const graph = graphOf([block("tee", "t"), block("join", "j", Array.from({ length: inputs }, () => "t:0"))]);
  const corners = cornersOf(layOut(graph));
  const ends = linesOf(graph, corners).map((line) => line.to.y - corners[1]!.y);
  expect(ends).toEqual([...ends].sort((a, b) => a - b));
  expect(new Set(ends).size).toBe(inputs);
  expect(ends[0]).toBeGreaterThan(0);
  expect(ends.at(-1)).toBeLessThan(nodeSize.height);
});
