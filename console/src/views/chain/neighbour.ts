import type { Graph } from "./graph";
import type { Layout } from "./layout";

/** The node that an arrow key leads to: along the first link, or up and down in the layer; null for none. */
export function neighbour(graph: Graph, layout: Layout, node: number, key: string): number | null {
  switch (key) {
    case "ArrowLeft":
      return graph.edges.find((edge) => edge.to === node && edge.from !== node)?.from ?? null;
    case "ArrowRight":
      return (
        graph.edges
          .filter((edge) => edge.from === node && edge.to !== node)
          .sort((a, b) => layout.places[a.to]!.row - layout.places[b.to]!.row)[0]?.to ?? null
      );
    case "ArrowUp":
      return nearest(layout, node, -1);
    case "ArrowDown":
      return nearest(layout, node, 1);
    default:
      return null;
  }
}

function nearest({ places }: Layout, node: number, direction: 1 | -1): number | null {
  const { layer, row } = places[node]!;
  let best: number | null = null;
  let bestDistance = Infinity;
  places.forEach((place, i) => {
    const distance = (place.row - row) * direction;
    if (place.layer === layer && distance > 0 && distance < bestDistance) {
      best = i;
      bestDistance = distance;
    }
  });
  return best;
}
