import { describe, expect, test } from "vitest";
import { graphOf, type Graph } from "../../src/views/chain/graph";
import { type Layout, layOut } from "../../src/views/chain/layout";
import { block } from "./chainOf";

function expectNoOverlap(layout: Layout): void {
  const byLayer = new Map<number, number[]>();
  layout.places.forEach(({ layer, row }) => byLayer.set(layer, [...(byLayer.get(layer) ?? []), row]));
  for (const rows of byLayer.values()) {
    rows.sort((a, b) => a - b);
    rows.slice(1).forEach((row, i) => expect(row - rows[i]!).toBeGreaterThanOrEqual(1));
  }
}

/** A graph of blocks by pairs of indices. */
function graphWith(count: number, pairs: [number, number][]): Graph {
  return {
    nodes: graphOf(Array.from({ length: count }, (_, i) => block("tee", `b${i}`))).nodes,
    edges: pairs.map(([from, to], input) => ({ from, to, pin: 0, input })),
  };
}

describe("the layout of a chain", () => {
  test("is empty for no blocks", () => {
    expect(layOut({ nodes: [], edges: [] })).toEqual({ places: [], layers: 0, rows: 0 });
  });

  test("puts a board, its source and what follows into one row", () => {
    const layout = layOut(graphOf([block("source", "s", [], "B"), block("spectrum", "h", ["s:0"])]));
    expect(layout).toEqual({
      places: [{ layer: 1, row: 0 }, { layer: 2, row: 0 }, { layer: 0, row: 0 }],
      layers: 3,
      rows: 1,
    });
  });

  test("puts a tee in the middle of what follows, in the order of its outputs", () => {
    const followers = [block("x", "second", ["t:1"]), block("x", "first", ["t:0"]), block("x", "third", ["t:2"])];
    const layout = layOut(graphOf([block("tee", "t"), ...followers]));
    expect(layout.places.map(({ row }) => row)).toEqual([1, 1, 0, 2]);
    expect(layout.places.map(({ layer }) => layer)).toEqual([1, 2, 2, 2]);
  });

  test("puts what joins two ways right of the longer one", () => {
    const longer = [block("x", "a", ["t:0"]), block("x", "b", ["a:0"])];
    const layout = layOut(graphOf([block("tee", "t"), ...longer, block("join", "j", ["t:1", "b:0"])]));
    expect(layout.places.map(({ layer }) => layer)).toEqual([1, 2, 3, 4]);
    expectNoOverlap(layout);
  });

  test("keeps trees of different origin apart", () => {
    const layout = layOut(graphOf([block("source", "s0"), block("source", "s1")]));
    expect(layout.places[1]!.row).toBeGreaterThan(1);
  });

  test("puts a block without a link beside the sources, right of the boards", () => {
    const layout = layOut(graphOf([block("source", "s", [], "B"), block("spectrum", "alone", [""])]));
    expect(layout.places[1]!.layer).toBe(1);
    expectNoOverlap(layout);
  });

  test.each([
    ["a link to itself", 1, [[0, 0]]],
    ["a ring of two", 2, [[0, 1], [1, 0]]],
    ["a ring of three with a way in", 4, [[0, 1], [1, 2], [2, 3], [3, 1]]],
    ["a doubled link", 2, [[0, 1], [0, 1]]],
  ] as [string, number, [number, number][]][])("ends with every block placed for %s", (_, count, pairs) => {
    const layout = layOut(graphWith(count, pairs));
    expect(layout.places).toHaveLength(count);
    layout.places.forEach(({ layer, row }) => {
      expect(layer).toBeGreaterThanOrEqual(1);
      expect(layer).toBeLessThanOrEqual(count);
      expect(row).toBeGreaterThanOrEqual(0);
    });
    expectNoOverlap(layout);
  });

  test("has room for a chain of 1000 blocks", () => {
    const blocks = Array.from({ length: 1000 }, (_, i) => block("tee", `b${i}`, i === 0 ? [] : [`b${i - 1}:0`]));
    expect(layOut(graphOf(blocks))).toMatchObject({ layers: 1001, rows: 1 });
  });

  test("lets no two of 300 blocks with links at random overlap, and each is right of what feeds it", () => {
    let state = 1;
    const random = (below: number): number => {
      state = (state * 48271) % 2147483647;
      return state % below;
    };
    const links = (i: number): string[] =>
      i === 0 ? [] : Array.from({ length: 1 + random(3) }, () => `b${random(i)}:${random(4)}`);
    const blocks = Array.from({ length: 300 }, (_, i) => block("tee", `b${i}`, links(i), i % 50 === 0 ? "B" : ""));
    const graph = graphOf(blocks);
    const layout = layOut(graph);
    expectNoOverlap(layout);
    const { places } = layout;
    graph.edges.forEach(({ from, to }) => expect(places[to]!.layer).toBeGreaterThan(places[from]!.layer));
  });
});
