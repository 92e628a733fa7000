import { type RefObject } from "preact";
import { useLayoutEffect, useRef, useState } from "preact/hooks";
import { useKept } from "../common/useKept";
import { type Camera, cameraText, fit, pan, parseCamera, type Size, zoom } from "./camera";
import { type ChainPointers, chainPointers, type Held } from "./pointers";

export interface CameraControl {
  camera: Camera;
  window: Size;
  /** Null shows everything. */
  set: (camera: Camera | null) => void;
  zoomBy: (factor: number) => void;
  panBy: (dx: number, dy: number) => void;
  handlers: ChainPointers;
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
  const held = useRef<Held>(new Map()).current;
  return { camera, window, set, zoomBy, panBy, handlers: chainPointers(held, { zoomBy, panBy }) };
}

function useSize(place: RefObject<SVGSVGElement>): Size {
  const [size, setSize] = useState<Size>({ width: 1, height: 1 });
  // Before anything is painted: a picture that isn't fitted yet would be seen, and zoomed by a quick key.
  useLayoutEffect(() => {
    const svg = place.current!;
    const measure = (): void => {
      setSize({ width: Math.max(1, svg.clientWidth), height: Math.max(1, svg.clientHeight) });
    };
    measure();
    const observer = new ResizeObserver(measure);
    observer.observe(svg);
    return () => observer.disconnect();
  }, []);
  return size;
}
