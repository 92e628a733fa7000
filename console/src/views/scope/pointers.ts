import { zoomed } from "../../charts/curves";
import { pinchFactor, turnOf } from "../../charts/pinch";
import type { View } from "./layout";

export interface PointerTargets {
  view: () => View;
  sampleAt: (x: number) => number;
  /** Not yet cut to what there is. */
  onView: (view: View) => void;
  onCursor: (sample: number) => void;
}

export interface PointerHandlers {
  onPointerDown: (event: PointerEvent) => void;
  onPointerMove: (event: PointerEvent) => void;
  onPointerUp: (event: PointerEvent) => void;
  onWheel: (event: WheelEvent) => void;
}

/** The part of what is seen by which the wheel moves. */
const wheelStep = 0.1;

/** The mouse moves the cursor, dragging the view; two fingers and the wheel zoom, the wheel sideways moves. */
export function handlersOf(targets: PointerTargets): PointerHandlers {
  const down = new Map<number, number>();
  const onPointerDown = (event: PointerEvent): void => {
    (event.currentTarget as Element).setPointerCapture(event.pointerId);
    down.set(event.pointerId, event.offsetX);
    targets.onCursor(targets.sampleAt(event.offsetX));
  };
  const onPointerMove = (event: PointerEvent): void => {
    const before = down.get(event.pointerId);
    if (before === undefined) {
      targets.onCursor(targets.sampleAt(event.offsetX));
      return;
    }
    const other = [...down].find(([id]) => id !== event.pointerId)?.[1];
    const x = event.offsetX;
    targets.onView(other === undefined ? dragged(targets, before, x) : pinched(targets, before, x, other));
    down.set(event.pointerId, x);
  };
  const onPointerUp = (event: PointerEvent): void => void down.delete(event.pointerId);
  const onWheel = (event: WheelEvent): void => {
    event.preventDefault();
    const { factor, sideways } = turnOf(event);
    const [from, to] = zoomed(targets.view(), targets.sampleAt(event.offsetX), factor);
    const step = sideways * wheelStep * (to - from);
    targets.onView([from + step, to + step]);
  };
  return { onPointerDown, onPointerMove, onPointerUp, onWheel };
}

function dragged(targets: PointerTargets, before: number, now: number): View {
  const step = targets.sampleAt(before) - targets.sampleAt(now);
  const [from, to] = targets.view();
  return [from + step, to + step];
}

function pinched(targets: PointerTargets, before: number, now: number, other: number): View {
  const factor = pinchFactor(Math.abs(before - other), Math.abs(now - other));
  return zoomed(targets.view(), targets.sampleAt(other), factor);
}
