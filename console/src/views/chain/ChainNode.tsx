import { short } from "../../base/format";
import { type Entry, lossesOf } from "../../model/ledger";
import { nodeSize, type Point } from "./geometry";
import type { Node } from "./graph";

interface ChainNodeProps {
  node: Node;
  entry: Entry | undefined;
  corner: Point;
  isChosen: boolean;
  /** Tab leads to this node alone; arrows lead from it to the others. */
  isTabStop: boolean;
  onPress: () => void;
  onKey: (event: KeyboardEvent) => void;
  onFocus: () => void;
}

export function ChainNode(props: ChainNodeProps): preact.JSX.Element {
  const { node, corner } = props;
  const kind = node.block?.type ?? "board";
  const trouble = nodeTrouble(node, props.entry);
  const description = `${kind} ${node.name}${trouble === null ? "" : `, ${trouble}`}`;
  return (
    <g
      class={`node${node.block === null ? " board" : ""}${trouble === null ? "" : " troubled"}`}
      transform={`translate(${corner.x} ${corner.y})`}
      tabindex={props.isTabStop ? 0 : -1}
      role="button"
      aria-label={description}
      aria-pressed={props.isChosen}
      data-test="node"
      data-name={node.name}
      onClick={props.onPress}
      onKeyDown={props.onKey}
      onFocus={props.onFocus}
    >
      <title>{description}</title>
      <rect width={nodeSize.width} height={nodeSize.height} rx={node.block === null ? 2 : 8} />
      <text class="name" x="10" y="20">{clipped(node.name, 16)}</text>
      <text class="kind" x="10" y="38">{trouble === null ? clipped(kind, 20) : clipped(`⚠ ${trouble}`, 20)}</text>
    </g>
  );
}

/** Losses of a block itself: those of its queues stand at the edges. */
function nodeTrouble(node: Node, entry: Entry | undefined): string | null {
  if (node.unlinked > 0) {
    return node.unlinked === 1 ? "input not linked" : `${node.unlinked} inputs not linked`;
  }
  const lost = [...(entry === undefined ? [] : lossesOf(entry))]
    .filter(([fate]) => fate !== "full_queue")
    .reduce((sum, [, count]) => sum + count, 0);
  return lost > 0 ? `${short(lost)} lost` : null;
}

function clipped(text: string, most: number): string {
  const letters = [...text.slice(0, 2 * most + 2)];
  return letters.length > most ? `${letters.slice(0, most - 1).join("")}…` : text;
}
