import { useEffect, useMemo, useRef, useState } from "preact/hooks";
import { draw, layoutFor, type Picture } from "./draw";
import { type Layout, sampleAt, type View } from "./layout";
import { handlersOf } from "./pointers";

export interface ScopePictureProps {
  picture: Picture;
  onView: (view: View) => void;
  onCursor: (sample: number) => void;
  onKey: (event: KeyboardEvent) => void;
  /** For those who can't see the picture. */
  description: string;
}

/** The screen of the oscilloscope: a canvas that fills its place. */
export function ScopePicture(props: ScopePictureProps): preact.JSX.Element {
  const canvas = useRef<HTMLCanvasElement>(null);
  const [size, setSize] = useState({ width: 0, height: 0 });
  const latest = useRef({ ...props, size });
  latest.current = { ...props, size };
  useEffect(() => watchSize(canvas.current!, setSize), []);
  useEffect(() => {
    const frame = requestAnimationFrame(() => drawOn(canvas.current!, props.picture, size));
    return () => cancelAnimationFrame(frame);
  }, [props.picture, size]);
  const handlers = useMemo(() => {
    const layout = (): Layout => {
      return layoutFor(latest.current.picture, latest.current.size.width, latest.current.size.height);
    };
    return handlersOf({
      view: () => latest.current.picture.view,
      sampleAt: (x) => sampleAt(x, layout(), latest.current.picture.view),
      onView: (view) => latest.current.onView(view),
      onCursor: (sample) => latest.current.onCursor(sample),
    });
  }, []);
  useEffect(() => {
    const element = canvas.current!;
    element.addEventListener("wheel", handlers.onWheel, { passive: false });
    return () => element.removeEventListener("wheel", handlers.onWheel);
  }, []);
  return (
    <canvas
      ref={canvas}
      class="scope-picture"
      tabIndex={0}
      role="img"
      aria-label={props.description}
      data-test="scope-picture"
      onPointerDown={handlers.onPointerDown}
      onPointerMove={handlers.onPointerMove}
      onPointerUp={handlers.onPointerUp}
      onPointerCancel={handlers.onPointerUp}
      onKeyDown={props.onKey}
    />
  );
}

interface Size {
  width: number;
  height: number;
}

function watchSize(canvas: HTMLCanvasElement, tell: (size: Size) => void): () => void {
  const watcher = new ResizeObserver(() => tell({ width: canvas.clientWidth, height: canvas.clientHeight }));
  watcher.observe(canvas);
  return () => watcher.disconnect();
}

function drawOn(canvas: HTMLCanvasElement, picture: Picture, { width, height }: Size): void {
  const ctx = canvas.getContext("2d");
  if (ctx === null || width === 0 || height === 0) {
    return;
  }
  const [w, h] = [Math.round(width * devicePixelRatio), Math.round(height * devicePixelRatio)];
  if (canvas.width !== w || canvas.height !== h) {
    canvas.width = w;
    canvas.height = h;
  }
  ctx.setTransform(devicePixelRatio, 0, 0, devicePixelRatio, 0, 0);
  draw(ctx, picture, width, height);
}
