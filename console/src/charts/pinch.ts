/** Fingers closer than this, in pixels, don't zoom: the factor would be anything. */
const closest = 20;

/** By which what is seen grows when two fingers were and are so far apart; < 1 shows less. */
export function pinchFactor(before: number, now: number): number {
  return before < closest || now < closest ? 1 : before / now;
}

/** What a turn of the wheel asks for; `sideways` is 1 or -1 where it moves. */
export interface Turn {
  factor: number;
  sideways: number;
}

type Wheel = Pick<WheelEvent, "deltaX" | "deltaY" | "shiftKey">;

/** The wheel zooms; with shift, or turned sideways, it moves. */
export function turnOf({ deltaX, deltaY, shiftKey }: Wheel): Turn {
  const isSideways = shiftKey || Math.abs(deltaX) > Math.abs(deltaY);
  if (isSideways || deltaY === 0) {
    return { factor: 1, sideways: Math.sign(deltaX + deltaY) };
  }
  return { factor: deltaY > 0 ? 1.25 : 0.8, sideways: 0 };
}
