import { type RefObject } from "preact";
import { useEffect, useRef, useState } from "preact/hooks";
import { useKept } from "../common/useKept";
import { type Camera, cameraText, fit, pan, parseCamera, type Size, zoom } from "./camera";
import type { Point } from "./geometry";

/** A finger that moved less still presses what is below it. */
const pressPixels = 5;
const wheelStep = 0.0015;

export interface CameraControl {
  camera: Camera;
  window: Size;
  /** Null shows everything. */
  set: (camera: Camera | null) => void;
  zoomBy: (factor: number) => void;
  panBy: (dx: number, dy: number) => void;
  handlers: preact.JSX.DOMAttributes<SVGSVGElement>;
}

/** What is seen of a picture; kept in the address once the operator chose it. */
export function useCamera(place: RefObject<SVGSVGElement>, picture: Size): CameraControl {
  const window = useSize(place);
  const [text, setText] = useKept("camera");
  const camera = parseCamera(text) ?? fit(picture, window);
  const set = (next: Camera | null): void => setText(next && cameraText(next));

  // Several movements may come between two pictures.
  const latest = useRef(camera);
  latest.current = camera;
  const change = (next: Camera): void => {
    latest.current = next;
    set(next);
  };
  const zoomBy = (factor: number, at = { x: window.width / 2, y: window.height / 2 }): void =>
    change(zoom(latest.current, factor, at.x, at.y));
  const panBy = (dx: number, dy: number): void => change(pan(latest.current, dx, dy));
  return { camera, window, set, zoomBy, panBy, handlers: usePointers(zoomBy, panBy) };
}

function useSize(place: RefObject<SVGSVGElement>): Size {
  const [size, setSize] = useState<Size>({ width: 1, height: 1 });
  useEffect(() => {
    const observer = new ResizeObserver(([entry]) => {
      const { width, height } = entry!.contentRect;
      setSize({ width: Math.max(1, width), height: Math.max(1, height) });
    });
    observer.observe(place.current!);
    return () => observer.disconnect();
  }, []);
  return size;
}

/** A mouse or a finger moves the picture, the wheel or two fingers zoom it. */
function usePointers(
  zoomBy: (factor: number, at: Point) => void,
  panBy: (dx: number, dy: number) => void,
): preact.JSX.DOMAttributes<SVGSVGElement> {
  const down = useRef(new Map<number, Point & { moved: number }>()).current;
  const lift = (event: PointerEvent): void => void down.delete(event.pointerId);
  return {
    onWheel: (event) => {
      event.preventDefault();
      zoomBy(Math.exp(-event.deltaY * wheelStep), { x: event.offsetX, y: event.offsetY });
    },
    onPointerDown: (event) => void down.set(event.pointerId, { x: event.clientX, y: event.clientY, moved: 0 }),
    onPointerUp: lift,
    onPointerCancel: lift,
    onPointerMove: (event) => {
      const last = down.get(event.pointerId);
      if (last === undefined) {
        return;
      }
      const [dx, dy] = [event.clientX - last.x, event.clientY - last.y];
      const moved = last.moved + Math.abs(dx) + Math.abs(dy);
      const others = [...down].filter(([id]) => id !== event.pointerId).map(([, point]) => point);
      down.set(event.pointerId, { x: event.clientX, y: event.clientY, moved });
      if (moved <= pressPixels) {
        return;
      }
      event.currentTarget.setPointerCapture(event.pointerId);
      const [other] = others;
      if (other === undefined) {
        panBy(dx, dy);
        return;
      }
      const box = event.currentTarget.getBoundingClientRect();
      const distance = (x: number, y: number): number => Math.max(1, Math.hypot(x - other.x, y - other.y));
      zoomBy(distance(event.clientX, event.clientY) / distance(last.x, last.y), {
        x: other.x - box.x,
        y: other.y - box.y,
      });
    },
  };
}
