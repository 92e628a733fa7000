import { pinchFactor, turnOf } from "../../charts/pinch";
import type { Point } from "./geometry";

/** A finger that moved less still presses what is below it. */
const pressPixels = 5;
/** So far the wheel moves. */
const wheelPixels = 60;

/** The pointers that are down, by their id. */
export type Held = Map<number, Point & { moved: number }>;

export interface PointerMoves {
  /** > 1 shows less, about a point of the window. */
  zoomBy: (factor: number, at: Point) => void;
  panBy: (dx: number, dy: number) => void;
}

export interface ChainPointers {
  onWheel: (event: WheelEvent) => void;
  onPointerDown: (event: PointerEvent) => void;
  onPointerUp: (event: PointerEvent) => void;
  onPointerCancel: (event: PointerEvent) => void;
  onPointerMove: (event: PointerEvent) => void;
}

/** A mouse or a finger moves the picture, the wheel or two fingers zoom it; sideways the wheel moves it. */
export function chainPointers(held: Held, { zoomBy, panBy }: PointerMoves): ChainPointers {
  const lift = (event: PointerEvent): void => void held.delete(event.pointerId);
  return {
    onWheel: (event) => {
      event.preventDefault();
      const { factor, sideways } = turnOf(event);
      if (sideways !== 0) {
        panBy(-sideways * wheelPixels, 0);
      } else if (factor !== 1) {
        zoomBy(1 / factor, { x: event.offsetX, y: event.offsetY });
      }
    },
    onPointerDown: (event) => void held.set(event.pointerId, { x: event.clientX, y: event.clientY, moved: 0 }),
    onPointerUp: lift,
    onPointerCancel: lift,
    onPointerMove: (event) => onMove(held, event, { zoomBy, panBy }),
  };
}

function onMove(held: Held, event: PointerEvent, { zoomBy, panBy }: PointerMoves): void {
  const last = held.get(event.pointerId);
  if (last === undefined) {
    return;
  }
  const now = { x: event.clientX, y: event.clientY };
  const [dx, dy] = [now.x - last.x, now.y - last.y];
  const moved = last.moved + Math.abs(dx) + Math.abs(dy);
  const other = [...held].find(([id]) => id !== event.pointerId)?.[1];
  held.set(event.pointerId, { ...now, moved });
  if (moved <= pressPixels) {
    return;
  }
  const picture = event.currentTarget as Element;
  picture.setPointerCapture(event.pointerId);
  if (other === undefined) {
    panBy(dx, dy);
    return;
  }
  const box = picture.getBoundingClientRect();
  const distance = (point: Point): number => Math.hypot(point.x - other.x, point.y - other.y);
  zoomBy(1 / pinchFactor(distance(last), distance(now)), { x: other.x - box.x, y: other.y - box.y });
}
