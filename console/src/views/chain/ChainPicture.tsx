import { useMemo, useRef, useState } from "preact/hooks";
import { isTyping } from "../../base/typing";
import type { Entry } from "../../model/ledger";
import { reveal } from "./camera";
import { ChainEdge, EdgeLabel } from "./ChainEdge";
import { ChainNode } from "./ChainNode";
import { cornersOf, linesOf, nodeSize, pictureSize } from "./geometry";
import type { Graph } from "./graph";
import { layOut } from "./layout";
import { neighbour } from "./neighbour";
import type { Traffic } from "./traffic";
import { type CameraControl, useCamera } from "./useCamera";

export interface ChainPictureProps {
  graph: Graph;
  /** By node. */
  entries: readonly (Entry | undefined)[];
  /** By edge. */
  traffic: readonly (Traffic | null)[];
  chosen: string | null;
  onChoose: (key: string) => void;
}

/** The chain as a graph. Tab leads to one node, arrows to the others; + - Home and Shift with arrows move it. */
export function ChainPicture(props: ChainPictureProps): preact.JSX.Element {
  const { graph, entries, traffic, chosen, onChoose } = props;
  const layout = useMemo(() => layOut(graph), [graph]);
  const corners = useMemo(() => cornersOf(layout), [layout]);
  const lines = useMemo(() => linesOf(graph, corners), [graph, corners]);
  const place = useRef<SVGSVGElement>(null);
  const control = useCamera(place, pictureSize(layout));
  const { camera } = control;
  const [reached, setReached] = useState<string | null>(null);
  const stop = tabStopOf(graph, reached ?? chosen);

  const focus = (node: number): void => {
    const element = place.current?.querySelectorAll<SVGGElement>(".node")[node];
    element?.focus({ preventScroll: true });
  };
  const show = (node: number): void => {
    const seen = reveal(camera, { ...corners[node]!, ...nodeSize }, control.window);
    if (seen !== camera) {
      control.set(seen);
    }
  };
  const onNodeKey = (event: KeyboardEvent, node: number): void => {
    const next = event.shiftKey ? null : neighbour(graph, layout, node, event.key);
    if (event.key === "Enter" || event.key === " ") {
      onChoose(graph.nodes[node]!.key);
    } else if (next !== null) {
      focus(next);
    } else {
      return;
    }
    event.preventDefault();
    event.stopPropagation();
  };

  return (
    <div class="chain-frame grow">
      <svg
        ref={place}
        class="chain"
        tabindex={-1}
        role="group"
        aria-label={description}
        onKeyDown={(event) => onKey(event, control)}
        {...control.handlers}
      >
        <g transform={`scale(${camera.scale}) translate(${-camera.x} ${-camera.y})`}>
          {graph.edges.map((edge, i) => (
            <ChainEdge key={i} graph={graph} edge={edge} line={lines[i]!} traffic={traffic[i] ?? null} />
          ))}
          {graph.edges.map((edge, i) => (
            <EdgeLabel key={i} graph={graph} edge={edge} line={lines[i]!} traffic={traffic[i] ?? null} />
          ))}
          {graph.nodes.map((node, i) => (
            <ChainNode
              key={node.key}
              node={node}
              entry={entries[i]}
              corner={corners[i]!}
              isChosen={node.key === chosen}
              isTabStop={i === stop}
              onPress={() => onChoose(node.key)}
              onKey={(event) => onNodeKey(event, i)}
              onFocus={() => {
                setReached(node.key);
                show(i);
              }}
            />
          ))}
        </g>
      </svg>
      <ZoomButtons control={control} />
    </div>
  );
}

const description =
  "The chain: boards, blocks and what flows between them. Arrow keys lead from block to block, with Shift they " +
  "move the picture; plus and minus zoom, Home shows all.";

/** The node that was reached last, if there still is one; else the first. */
function tabStopOf(graph: Graph, key: string | null): number {
  return Math.max(0, graph.nodes.findIndex((node) => node.key === key));
}

function ZoomButtons({ control }: { control: CameraControl }): preact.JSX.Element {
  return (
    <div class="chain-zoom">
      <button type="button" title="Key -" aria-label="Zoom out" onClick={() => control.zoomBy(1 / zoomStep)}>
        −
      </button>
      <button type="button" title="Key +" aria-label="Zoom in" onClick={() => control.zoomBy(zoomStep)}>
        +
      </button>
      <button type="button" title="Key Home" data-test="fit" onClick={() => control.set(null)}>
        Fit
      </button>
    </div>
  );
}

const zoomStep = 1.3;
const panStep = 80;
const actions: Record<string, (control: CameraControl) => void> = {
  "+": (control) => control.zoomBy(zoomStep),
  "=": (control) => control.zoomBy(zoomStep),
  "-": (control) => control.zoomBy(1 / zoomStep),
  ArrowLeft: (control) => control.panBy(panStep, 0),
  ArrowRight: (control) => control.panBy(-panStep, 0),
  ArrowUp: (control) => control.panBy(0, panStep),
  ArrowDown: (control) => control.panBy(0, -panStep),
  Home: (control) => control.set(null),
};

function onKey(event: KeyboardEvent, control: CameraControl): void {
  const action = actions[event.key];
  if (action !== undefined && !isTyping(event)) {
    action(control);
    event.preventDefault();
  }
}
