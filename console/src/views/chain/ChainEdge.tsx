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
  const kind = trouble !== null ? "troubled" : rate !== null && rate > 0 ? "flowing" : "idle";
  const from = graph.nodes[edge.from]!.name;
  const to = graph.nodes[edge.to]!.name;
  const { x, y } = line.to;
  // On the side that the line doesn't come from.
  const [near, far] = line.from.y < y ? [y + 19, y + 36] : [y - 8, y - 25];
  return (
    <g
      class={`edge ${kind}`}
      data-test="edge"
      data-from={from}
      data-to={to}
      data-input={edge.input}
      data-trouble={trouble}
    >
      <path d={curve(line)} stroke-width={widthOf(rate)} />
      {traffic !== null && (
        <text x={x - 8} y={near} text-anchor="end" data-test="rate">
          {rate === null ? "–" : `${short(rate)}/s`}
        </text>
      )}
      {trouble !== null && (
        <text class="trouble" x={x - 8} y={far} text-anchor="end">{`⚠ ${trouble}`}</text>
      )}
    </g>
  );
}
