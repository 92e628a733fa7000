import { expect, it } from "vitest";
import { chainPointers } from "../../src/views/chain/pointers";

type Call = [name: string, ...numbers: number[]];

/** What the handlers asked for, in order. The picture begins 10 px right of the page's corner. */
function makePicture() {
  const calls: Call[] = [];
  const handlers = chainPointers(new Map(), {
    zoomBy: (factor, { x, y }) => calls.push(["zoom", factor, x, y]),
    panBy: (dx, dy) => calls.push(["pan", dx, dy]),
  });
  return { calls, handlers };
}

const currentTarget = { setPointerCapture: () => undefined, getBoundingClientRect: () => ({ x: 10, y: 0 }) };
const at = (clientX: number, clientY: number, pointerId = 1): PointerEvent =>
  ({ clientX, clientY, pointerId, currentTarget }) as unknown as PointerEvent;
const preventDefault = (): void => undefined;
const turned = (deltaX: number, deltaY: number, shiftKey = false): WheelEvent =>
  ({ offsetX: 7, offsetY: 9, deltaX, deltaY, deltaMode: 1, shiftKey, preventDefault }) as unknown as WheelEvent;

it("zooms with the wheel at the mouse", () => {
  const { calls, handlers } = makePicture();
  handlers.onWheel(turned(0, -3));
  handlers.onWheel(turned(0, 3));
  expect(calls).toEqual([["zoom", 1.25, 7, 9], ["zoom", 0.8, 7, 9]]);
});

it("moves with the wheel turned sideways or with Shift, and doesn't zoom", () => {
  const { calls, handlers } = makePicture();
  handlers.onWheel(turned(4, 0));
  handlers.onWheel(turned(0, -4, true));
  handlers.onWheel(turned(0, 0));
  expect(calls).toEqual([["pan", -60, 0], ["pan", 60, 0]]);
});

it("moves with a pointer that is down and went further than a press does", () => {
  const { calls, handlers } = makePicture();
  handlers.onPointerMove(at(90, 90));
  handlers.onPointerDown(at(50, 50));
  handlers.onPointerMove(at(53, 50));
  handlers.onPointerMove(at(60, 45));
  handlers.onPointerUp(at(60, 45));
  handlers.onPointerMove(at(70, 45));
  expect(calls).toEqual([["pan", 7, -5]]);
});

it("zooms with two fingers about the one that rests, but not with fingers too close to tell", () => {
  const { calls, handlers } = makePicture();
  handlers.onPointerDown(at(50, 50, 1));
  handlers.onPointerDown(at(100, 50, 2));
  handlers.onPointerMove(at(150, 50, 2));
  expect(calls).toEqual([["zoom", 2, 40, 50]]);
  handlers.onPointerMove(at(55, 50, 2));
  expect(calls[1]).toEqual(["zoom", 1, 40, 50]);
});
