import { expect, it } from "vitest";
import type { View } from "../../src/views/scope/layout";
import { handlersOf } from "../../src/views/scope/pointers";

/** A screen of 100 px that shows samples 0 to 1000 at first. */
function makeScreen() {
  const screen = { view: [0, 1000] as View, cursor: NaN };
  const handlers = handlersOf({
    view: () => screen.view,
    sampleAt: (x) => screen.view[0] + (x / 100) * (screen.view[1] - screen.view[0]),
    onView: (view) => (screen.view = view),
    onCursor: (sample) => (screen.cursor = sample),
  });
  return { screen, handlers };
}

const at = (offsetX: number, pointerId = 1): PointerEvent =>
  ({ offsetX, pointerId, currentTarget: { setPointerCapture: () => undefined } }) as unknown as PointerEvent;

it("has the cursor follow the mouse", () => {
  const { screen, handlers } = makeScreen();
  handlers.onPointerMove(at(25));
  expect(screen).toEqual({ view: [0, 1000], cursor: 250 });
});

it("moves what is dragged with the pointer", () => {
  const { screen, handlers } = makeScreen();
  handlers.onPointerDown(at(50));
  handlers.onPointerMove(at(40));
  handlers.onPointerMove(at(30));
  expect(screen.view[0]).toBeCloseTo(200, 9);
  handlers.onPointerUp(at(30));
  handlers.onPointerMove(at(90));
  expect(screen.view[0]).toBeCloseTo(200, 9);
});

it("zooms with two fingers about the one that rests", () => {
  const { screen, handlers } = makeScreen();
  handlers.onPointerDown(at(20, 1));
  handlers.onPointerDown(at(60, 2));
  handlers.onPointerMove(at(100, 2));
  // The distance doubled: half as much is seen, and sample 200 stays at 20 px.
  expect(screen.view).toEqual([100, 600]);
});

it("doesn't zoom with fingers too close to tell", () => {
  const { screen, handlers } = makeScreen();
  handlers.onPointerDown(at(50, 1));
  handlers.onPointerDown(at(51, 2));
  handlers.onPointerMove(at(52, 2));
  expect(screen.view).toEqual([0, 1000]);
});

const preventDefault = (): void => undefined;
const turned = (deltaX: number, deltaY: number, shiftKey = false): WheelEvent =>
  ({ offsetX: 50, deltaX, deltaY, deltaMode: 1, shiftKey, preventDefault }) as unknown as WheelEvent;

it("zooms with the wheel about the mouse", () => {
  const { screen, handlers } = makeScreen();
  handlers.onWheel(turned(0, -3));
  expect(screen.view).toEqual([100, 900]);
});

it("moves with the wheel turned sideways or with Shift, and doesn't zoom", () => {
  const { screen, handlers } = makeScreen();
  handlers.onWheel(turned(5, 0));
  expect(screen.view).toEqual([100, 1100]);
  handlers.onWheel(turned(0, -5, true));
  expect(screen.view).toEqual([0, 1000]);
});
