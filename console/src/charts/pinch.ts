/** Fingers closer than this, in pixels, don't zoom: the factor would be anything. */
const closest = 20;

/** By which what is seen grows when two fingers were and are so far apart; < 1 shows less. */
export function pinchFactor(before: number, now: number): number {
  return before < closest || now < closest ? 1 : before / now;
}

/** What a turn of the wheel asks for; `sideways` is where it moves, 1 or -1 for a whole notch. */
export interface Turn {
  factor: number;
  sideways: number;
}

type Wheel = Pick<WheelEvent, "deltaX" | "deltaY" | "deltaMode" | "shiftKey">;

/** Of a turn of one notch, by the unit that the browser tells it in: pixels, lines, pages. */
const notches = [100, 3, 1];
const factorOfNotch = 1.25;

/** The wheel zooms; with shift, or turned sideways, it moves. A touch pad tells of many small turns. */
export function turnOf({ deltaX, deltaY, deltaMode, shiftKey }: Wheel): Turn {
  const turned = (delta: number): number => Math.min(Math.max(delta / (notches[deltaMode] ?? 100), -1), 1);
  const isSideways = shiftKey || Math.abs(deltaX) > Math.abs(deltaY);
  return isSideways
    ? { factor: 1, sideways: turned(deltaX + deltaY) }
    : { factor: factorOfNotch ** turned(deltaY), sideways: 0 };
}
