import { pinchFactor, turnOf } from "./pinch";

/** What mouse, pen and fingers do to curves, in pixels from the left of the plot. */
export interface CurveGestures {
  /** Whether dragging marks without Shift, too. */
  isMarking: () => boolean;
  onZoom: (about: number, factor: number) => void;
  /** By so many pixels to the right. */
  onMove: (by: number) => void;
  /** A part is being dragged over; null when that ended. */
  onDrag: (part: readonly [number, number] | null) => void;
  onChosen: (part: readonly [number, number]) => void;
  onMarked: (part: readonly [number, number]) => void;
  onWhole: () => void;
  /** No pointer is down any more. */
  onReleased: () => void;
}

/** A pointer that is down: where it came down and where it is, and what it does. */
interface Down {
  start: number;
  at: number;
  does: "move" | "choose" | "mark";
}

/** Less is a click, in pixels. */
const leastDrag = 3;
const wheelStep = 100;

/**
 * The wheel zooms, and moves with Shift. Dragging chooses a part; with Shift, or while marking, it marks one; with
 * the middle or the right button it moves. One finger moves, two zoom. A double click shows all. Answers what
 * tells whether a pointer is down.
 */
export function listenToCurveGestures(over: HTMLElement, gestures: CurveGestures): () => boolean {
  const pointers = new Map<number, Down>();
  const read = (event: MouseEvent): number => event.clientX - over.getBoundingClientRect().left;
  const drop = (event: PointerEvent): void => {
    pointers.delete(event.pointerId);
    gestures.onDrag(null);
    if (pointers.size === 0) {
      gestures.onReleased();
    }
  };
  over.addEventListener("wheel", (event) => onWheel(event, read(event), gestures), { passive: false });
  over.addEventListener("dblclick", () => gestures.onWhole());
  // The browser has uses of its own for these buttons.
  over.addEventListener("contextmenu", (event) => event.preventDefault());
  over.addEventListener("mousedown", (event) => event.button === 1 && event.preventDefault());
  over.addEventListener("pointerdown", (event) => {
    over.setPointerCapture(event.pointerId);
    gestures.onDrag(null);
    const at = read(event);
    pointers.set(event.pointerId, { start: at, at, does: doneBy(event, gestures.isMarking()) });
  });
  over.addEventListener("pointermove", (event) => {
    if (pointers.has(event.pointerId)) {
      onGone(pointers, event.pointerId, read(event), gestures);
    }
  });
  over.addEventListener("pointerup", (event) => {
    const down = pointers.get(event.pointerId);
    if (down !== undefined && pointers.size === 1) {
      onUp(down, gestures);
    }
    drop(event);
  });
  over.addEventListener("pointercancel", drop);
  return () => pointers.size > 0;
}

function doneBy({ pointerType, button, shiftKey }: PointerEvent, isMarking: boolean): Down["does"] {
  if (button !== 0) {
    return "move";
  }
  return isMarking || shiftKey ? "mark" : pointerType === "touch" ? "move" : "choose";
}

function onWheel(event: WheelEvent, at: number, { onMove, onZoom }: CurveGestures): void {
  event.preventDefault();
  const { factor, sideways } = turnOf(event);
  if (sideways !== 0) {
    onMove(-sideways * wheelStep);
  } else {
    onZoom(at, factor);
  }
}

/** A pointer went on to `to`. */
function onGone(pointers: Map<number, Down>, id: number, to: number, gestures: CurveGestures): void {
  const down = pointers.get(id)!;
  const from = down.at;
  down.at = to;
  const other = [...pointers.entries()].find(([known]) => known !== id)?.[1];
  if (other !== undefined) {
    // What two fingers began is no mark, whichever leaves first.
    down.does = other.does = "move";
    gestures.onMove((to - from) / 2);
    gestures.onZoom((to + other.at) / 2, pinchFactor(Math.abs(from - other.at), Math.abs(to - other.at)));
  } else if (down.does === "move") {
    gestures.onMove(to - from);
  } else {
    gestures.onDrag(partOf(down));
  }
}

function onUp(down: Down, gestures: CurveGestures): void {
  const [from, to] = partOf(down);
  if (down.does === "move" || to - from < leastDrag) {
    return;
  }
  (down.does === "mark" ? gestures.onMarked : gestures.onChosen)([from, to]);
}

function partOf({ start, at }: Down): readonly [number, number] {
  return [Math.min(start, at), Math.max(start, at)];
}
