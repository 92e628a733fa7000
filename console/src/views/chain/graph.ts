import type { Block } from "../../model/blocks";

/** A block or, where sources and high voltage begin, a board, whose `block` is null. */
export interface Node {
  block: Block | null;
  name: string;
  /** What the address calls it: no two nodes have the same. */
  key: string;
  /** Inputs that are linked to nothing. */
  unlinked: number;
}

/** `from` and `to` are indices of nodes. */
export interface Edge {
  from: number;
  to: number;
  /** The output of `from`; -1 of a board. */
  pin: number;
  /** The input of `to`; -1 where there is none, as a board isn't linked to one. */
  input: number;
}

/** The blocks in their order, then the boards in the order of their first mention. */
export interface Graph {
  nodes: Node[];
  edges: Edge[];
}

export function graphOf(blocks: readonly Block[]): Graph {
  const keys = keysOf(blocks);
  const nodes = blocks.map((block, i): Node => ({ block, name: block.name, key: keys[i]!, unlinked: 0 }));
  const boards = new Map<string, number>();
  const edges: Edge[] = [];
  const firstOfName = new Map<string, number>();
  blocks.forEach((block, to) => {
    const board = block.shape["board"];
    if (typeof board === "string" && board !== "") {
      edges.push({ from: boardNode(nodes, boards, board), to, pin: -1, input: -1 });
    }
    block.links.forEach((link, input) => {
      const from = firstOfName.get(link.from);
      if (from === undefined) {
        ++nodes[to]!.unlinked;
      } else {
        edges.push({ from, to, pin: link.pin, input });
      }
    });
    // The server, too, links to the first of those that share a name, and only to earlier ones.
    if (!firstOfName.has(block.name)) {
      firstOfName.set(block.name, to);
    }
  });
  return { nodes, edges };
}

function boardNode(nodes: Node[], boards: Map<string, number>, name: string): number {
  const known = boards.get(name);
  if (known !== undefined) {
    return known;
  }
  boards.set(name, nodes.length);
  return nodes.push({ block: null, name, key: `board ${name}`, unlinked: 0 }) - 1;
}

/** Paths, or names where there is none, told apart by a number where several are alike. */
function keysOf(blocks: readonly Block[]): string[] {
  const seen = new Map<string, number>();
  return blocks.map((block) => {
    const key = block.path || block.name;
    const count = (seen.get(key) ?? 0) + 1;
    seen.set(key, count);
    return count === 1 ? key : `${key} #${count}`;
  });
}
