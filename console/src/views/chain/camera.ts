/** What part of a picture is seen: the point in the upper left corner, and how much larger than made it is. */
export interface Camera {
  x: number;
  y: number;
  scale: number;
}

export interface Size {
  width: number;
  height: number;
}

const minScale = 0.02;
const maxScale = 4;
/** Small pictures aren't blown up beyond this. */
const maxFitScale = 1.5;

const clampScale = (scale: number): number => Math.min(maxScale, Math.max(minScale, scale));

/** Everything, in the middle. */
export function fit(picture: Size, window: Size): Camera {
  const wanted = Math.min(window.width / picture.width, window.height / picture.height, maxFitScale);
  const scale = clampScale(Number.isFinite(wanted) ? wanted : 1);
  return {
    x: (picture.width - window.width / scale) / 2,
    y: (picture.height - window.height / scale) / 2,
    scale,
  };
}

/** `px` and `py` are the window's point that stays where it is. */
export function zoom(camera: Camera, factor: number, px: number, py: number): Camera {
  const scale = clampScale(camera.scale * factor);
  return {
    x: camera.x + px / camera.scale - px / scale,
    y: camera.y + py / camera.scale - py / scale,
    scale,
  };
}

/** By so many pixels of the window, the picture following the finger. */
export function pan(camera: Camera, dx: number, dy: number): Camera {
  return { ...camera, x: camera.x - dx / camera.scale, y: camera.y - dy / camera.scale };
}

/** The least move that brings a box of the picture into the window; the same camera when it is there. */
export function reveal(camera: Camera, box: { x: number; y: number } & Size, window: Size): Camera {
  const x = moved(camera.x, window.width / camera.scale, box.x, box.width);
  const y = moved(camera.y, window.height / camera.scale, box.y, box.height);
  return x === camera.x && y === camera.y ? camera : { ...camera, x, y };
}

function moved(start: number, length: number, boxStart: number, boxLength: number): number {
  if (boxStart < start || boxLength > length) {
    return boxStart;
  }
  return Math.max(start, boxStart + boxLength - length);
}

/** For the address: "x,y,scale". */
export function cameraText(camera: Camera): string {
  return `${camera.x.toFixed(2)},${camera.y.toFixed(2)},${camera.scale.toFixed(4)}`;
}

/** Null when it is none. */
export function parseCamera(text: string | null): Camera | null {
  const [x, y, scale, ...more] = (text ?? "").split(",").map((part) => (part.trim() === "" ? NaN : Number(part)));
  if (x === undefined || y === undefined || scale === undefined || more.length > 0) {
    return null;
  }
  const isGood = [x, y, scale].every((value) => Number.isFinite(value)) && scale > 0;
  return isGood ? { x, y, scale: clampScale(scale) } : null;
}
