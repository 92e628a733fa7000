import { pinchFactor, turnOf } from "../pinch";

export interface Point {
  x: number;
  y: number;
}

/** What mouse, pen and fingers do, in pixels of the element. */
export interface Gestures {
  /** The mouse is here, or a finger tapped here; null when the mouse left. */
  onPoint: (at: Point | null) => void;
  onMove: (width: number, height: number) => void;
  onZoom: (about: Point, factor: number) => void;
  onWhole: () => void;
}

const wheelStep = 100;

/** Dragging moves, the wheel and two fingers zoom, the wheel with shift moves, a double click shows all. */
export function listenToGestures(element: HTMLElement, gestures: Gestures): void {
  const down = new Map<number, Point>();
  const read = (event: MouseEvent): Point => {
    const { left, top } = element.getBoundingClientRect();
    return { x: event.clientX - left, y: event.clientY - top };
  };
  const wheel = (event: WheelEvent): void => {
    onWheel(event, read(event), gestures);
    gestures.onPoint(read(event));
  };
  element.addEventListener("wheel", wheel, { passive: false });
  element.addEventListener("dblclick", () => gestures.onWhole());
  element.addEventListener("pointerdown", (event) => {
    if (event.button === 0) {
      down.set(event.pointerId, read(event));
      element.setPointerCapture(event.pointerId);
      gestures.onPoint(read(event));
    }
  });
  element.addEventListener("pointermove", (event) => {
    if (down.has(event.pointerId)) {
      onDrag(down, event.pointerId, read(event), gestures);
    }
    if (event.pointerType === "mouse") {
      gestures.onPoint(read(event));
    }
  });
  const onUp = (event: PointerEvent): void => void down.delete(event.pointerId);
  element.addEventListener("pointerup", onUp);
  element.addEventListener("pointercancel", onUp);
  element.addEventListener("pointerleave", (event) => {
    if (event.pointerType === "mouse") {
      gestures.onPoint(null);
    }
  });
}

function onWheel(event: WheelEvent, at: Point, { onMove, onZoom }: Gestures): void {
  event.preventDefault();
  const { factor, sideways } = turnOf(event);
  if (sideways !== 0) {
    onMove(-sideways * wheelStep * 0.5, 0);
  } else if (factor !== 1) {
    onZoom(at, factor);
  }
}

/** A pointer went on to `to`; with a second one it zooms about the middle of both, too. */
function onDrag(down: Map<number, Point>, id: number, to: Point, { onMove, onZoom }: Gestures): void {
  const from = down.get(id)!;
  const other = [...down].find(([known]) => known !== id)?.[1];
  down.set(id, to);
  const share = other === undefined ? 1 : 0.5;
  onMove((to.x - from.x) * share, (to.y - from.y) * share);
  if (other !== undefined) {
    const distance = (point: Point): number => Math.hypot(point.x - other.x, point.y - other.y);
    const factor = pinchFactor(distance(from), distance(to));
    if (factor !== 1) {
      onZoom({ x: (to.x + other.x) / 2, y: (to.y + other.y) / 2 }, factor);
    }
  }
}
