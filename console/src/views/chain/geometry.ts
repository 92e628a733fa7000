import type { Size } from "./camera";
import type { Edge, Graph } from "./graph";
import type { Layout } from "./layout";

// Where the layout's places are in the picture, in its own units.

export const nodeSize: Size = { width: 150, height: 48 };
const layerWidth = 250;
const rowHeight = 70;
const margin = 24;
/** Between inputs of one block. */
const portGap = 14;

export interface Point {
  x: number;
  y: number;
}

/** The upper left corners of the nodes. */
export function cornersOf(layout: Layout): Point[] {
  return layout.places.map(({ layer, row }) => ({ x: margin + layer * layerWidth, y: margin + row * rowHeight }));
}

export function pictureSize(layout: Layout): Size {
  return {
    width: 2 * margin + Math.max(0, layout.layers - 1) * layerWidth + nodeSize.width,
    height: 2 * margin + Math.max(0, layout.rows - 1) * rowHeight + nodeSize.height,
  };
}

export interface Line {
  from: Point;
  to: Point;
}

/** From the right side of one node to an input on the left side of another. */
export function linesOf(graph: Graph, corners: readonly Point[]): Line[] {
  return graph.edges.map((edge) => {
    const from = corners[edge.from]!;
    const to = corners[edge.to]!;
    return {
      from: { x: from.x + nodeSize.width, y: from.y + nodeSize.height / 2 },
      to: { x: to.x, y: to.y + nodeSize.height / 2 + portOffset(edge, graph) },
    };
  });
}

/** Inputs stand below each other, as far apart as there is room. */
function portOffset(edge: Edge, graph: Graph): number {
  const inputs = graph.nodes[edge.to]!.block?.links.length ?? 0;
  if (edge.input < 0 || inputs < 2) {
    return 0;
  }
  const gap = Math.min(portGap, (nodeSize.height - 8) / (inputs - 1));
  return (edge.input - (inputs - 1) / 2) * gap;
}

export function curve({ from, to }: Line): string {
  const bend = from.x + (to.x - from.x) / 2.5;
  return `M${from.x} ${from.y}C${bend} ${from.y} ${bend} ${to.y} ${to.x} ${to.y}`;
}
