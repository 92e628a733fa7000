import { short } from "../../base/format";
import { curve, type Line } from "./geometry";
import type { Edge, Graph } from "./graph";
import { type Traffic, troubleOf, widthOf } from "./traffic";

interface ChainEdgeProps {
  graph: Graph;
  edge: Edge;
  line: Line;
  /** Null when no records go this way. */
  traffic: Traffic | null;
}

export function ChainEdge({ graph, edge, line, traffic }: ChainEdgeProps): preact.JSX.Element {
  const rate = traffic?.rate ?? null;
  const trouble = traffic && troubleOf(traffic);
  return (
    <g class={`edge ${kindOf(traffic)}`} data-test="edge" {...endsOf(graph, edge)} data-trouble={trouble}>
      <path d={curve(line)} stroke-width={widthOf(rate)} />
    </g>
  );
}

/** What stands at an edge; drawn after all edges, so that none passes over it. */
export function EdgeLabel({ graph, edge, line, traffic }: ChainEdgeProps): preact.JSX.Element | null {
  if (traffic === null) {
    return null;
  }
  const trouble = troubleOf(traffic);
  const { x, y } = line.to;
  // On the side that the line doesn't come from.
  const [near, far] = line.from.y < y ? [y + 20, y + 37] : [y - 9, y - 26];
  return (
    <g class={`edge ${kindOf(traffic)}`} data-test="edge-label" {...endsOf(graph, edge)}>
      <text x={x - 8} y={near} text-anchor="end" data-test="rate">
        {traffic.rate === null ? "–" : `${short(traffic.rate)}/s`}
      </text>
      {trouble !== null && (
        <text class="trouble" x={x - 8} y={far} text-anchor="end">{`⚠ ${trouble}`}</text>
      )}
    </g>
  );
}

function kindOf(traffic: Traffic | null): string {
  if (traffic !== null && troubleOf(traffic) !== null) {
    return "troubled";
  }
  return (traffic?.rate ?? 0) > 0 ? "flowing" : "idle";
}

function endsOf(graph: Graph, { from, to, input }: Edge): Record<string, string | number> {
  return { "data-from": graph.nodes[from]!.name, "data-to": graph.nodes[to]!.name, "data-input": input };
}
