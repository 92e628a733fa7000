import type { Edge, Graph } from "./graph";

/** Where a node stands: layers from left to right, rows from top to bottom, which may be broken numbers. */
export interface Place {
  layer: number;
  row: number;
}

export interface Layout {
  places: Place[];
  layers: number;
  rows: number;
}

/** Between trees of different origin, in rows. */
const treeGap = 0.3;

/**
 * A node stands right of all that feed it, boards leftmost. Each node without a follower of its own has a row for
 * itself, and any other stands in the middle of its followers: so no two share a place.
 */
export function layOut(graph: Graph): Layout {
  const layers = layersOf(graph);
  const rows = rowsOf(graph, layers);
  return {
    places: layers.map((layer, i) => ({ layer, row: rows[i]! })),
    layers: layers.reduce((most, layer) => Math.max(most, layer + 1), 0),
    rows: rows.reduce((most, row) => Math.max(most, row + 1), 0),
  };
}

/** The longest way from the left. A link back, which can't be, counts for nothing. */
function layersOf({ nodes, edges }: Graph): number[] {
  const into = edgesBy(edges, nodes.length, (edge) => edge.to);
  const layers = nodes.map((node): number => (node.block === null ? 0 : 1));
  const state = nodes.map((): "new" | "open" | "done" => "new");
  const visit = (node: number): void => {
    state[node] = "open";
    for (const { from } of into[node]!) {
      if (state[from] === "new") {
        visit(from);
      }
      if (state[from] === "done") {
        layers[node] = Math.max(layers[node]!, layers[from]! + 1);
      }
    }
    state[node] = "done";
  };
  nodes.forEach((_, node) => state[node] === "new" && visit(node));
  return layers;
}

function rowsOf({ nodes, edges }: Graph, layers: readonly number[]): number[] {
  const forward = edges.filter(({ from, to }) => layers[to]! > layers[from]!);
  const outOf = edgesBy(forward, nodes.length, (edge) => edge.from);
  outOf.forEach((followers) => followers.sort((a, b) => a.pin - b.pin || a.to - b.to));
  const rows = nodes.map(() => -1);
  const seen = nodes.map(() => false);
  let next = 0;
  const visit = (node: number): void => {
    seen[node] = true;
    const own: number[] = [];
    for (const { to } of outOf[node]!) {
      if (!seen[to]) {
        own.push(to);
        visit(to);
      }
    }
    rows[node] = own.length === 0 ? next++ : (rows[own[0]!]! + rows[own.at(-1)!]!) / 2;
  };
  const fed = new Set(forward.map((edge) => edge.to));
  const roots = nodes.map((_, node) => node).filter((node) => !fed.has(node));
  for (const root of roots.sort((a, b) => layers[a]! - layers[b]! || a - b)) {
    next += next > 0 ? treeGap : 0;
    visit(root);
  }
  return rows;
}

function edgesBy(edges: readonly Edge[], count: number, end: (edge: Edge) => number): Edge[][] {
  const sorted: Edge[][] = Array.from({ length: count }, () => []);
  edges.forEach((edge) => sorted[end(edge)]!.push(edge));
  return sorted;
}
