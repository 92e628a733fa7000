import { beforeEach, describe, expect, it } from "vitest";
import { listenToCurveGestures } from "../../src/charts/curveGestures";

class Place extends EventTarget {
  getBoundingClientRect(): { left: number } {
    return { left: 100 };
  }
  setPointerCapture(): void {}
  send(type: string, values: object): Event {
    const event = Object.assign(new Event(type, { cancelable: true }), values);
    this.dispatchEvent(event);
    return event;
  }
}

let place: Place;
let calls: unknown[];
let isMarking: boolean;
let isHeld: () => boolean;
let released: number;

beforeEach(() => {
  place = new Place();
  calls = [];
  isMarking = false;
  released = 0;
  isHeld = listenToCurveGestures(place as unknown as HTMLElement, {
    isMarking: () => isMarking,
    onZoom: (about, factor) => calls.push(["zoom", about, factor]),
    onMove: (by) => calls.push(["move", by]),
    onDrag: (part) => part !== null && calls.push(["drag", ...part]),
    onChosen: (part) => calls.push(["chosen", ...part]),
    onMarked: (part) => calls.push(["marked", ...part]),
    onWhole: () => calls.push(["whole"]),
    onReleased: () => ++released,
  });
});

const mouse = { pointerType: "mouse", pointerId: 1, button: 0, shiftKey: false };
const finger = (pointerId: number) => ({ pointerType: "touch", pointerId, button: 0, shiftKey: false });

/** From the first to the last of these. */
function drag(pointer: object, ...at: number[]): void {
  place.send("pointerdown", { ...pointer, clientX: 100 + at[0]! });
  at.slice(1).forEach((x) => place.send("pointermove", { ...pointer, clientX: 100 + x }));
  place.send("pointerup", { ...pointer, clientX: 100 + at[at.length - 1]! });
}

describe("the mouse", () => {
  it("chooses what it is dragged over, in either direction", () => {
    drag(mouse, 50, 40, 20);
    expect(calls).toEqual([["drag", 40, 50], ["drag", 20, 50], ["chosen", 20, 50]]);
  });

  it("marks with Shift, and without while marking", () => {
    drag({ ...mouse, shiftKey: true }, 10, 40);
    isMarking = true;
    drag(mouse, 60, 90);
    const ended = calls.filter((call) => (call as string[])[0] !== "drag");
    expect(ended).toEqual([["marked", 10, 40], ["marked", 60, 90]]);
  });

  it.each([1, 2])("moves with button %d", (button) => {
    drag({ ...mouse, button }, 50, 57, 40);
    expect(calls).toEqual([["move", 7], ["move", -17]]);
  });

  it("chooses nothing by a click, and all by two", () => {
    drag(mouse, 50, 51);
    place.send("dblclick", {});
    expect(calls).toEqual([["drag", 50, 51], ["whole"]]);
  });

  it("zooms where it is with the wheel, and the page doesn't scroll", () => {
    const event = place.send("wheel", { clientX: 130, deltaX: 0, deltaY: -3, deltaMode: 1, shiftKey: false });
    expect(calls).toEqual([["zoom", 30, 0.8]]);
    expect(event.defaultPrevented).toBe(true);
  });

  it("chooses nothing when the browser takes it away", () => {
    place.send("pointerdown", { ...mouse, clientX: 110 });
    place.send("pointercancel", { ...mouse });
    place.send("pointermove", { ...mouse, clientX: 150 });
    place.send("pointerup", { ...mouse, clientX: 150 });
    expect(calls).toEqual([]);
  });
});

it("tells whether a pointer is down, and when the last one isn't any more", () => {
  expect(isHeld()).toBe(false);
  place.send("pointerdown", { ...finger(1), clientX: 200 });
  place.send("pointerdown", { ...finger(2), clientX: 300 });
  place.send("pointerup", { ...finger(1), clientX: 200 });
  expect([isHeld(), released]).toEqual([true, 0]);
  place.send("pointercancel", { ...finger(2) });
  expect([isHeld(), released]).toEqual([false, 1]);
});

describe("fingers", () => {
  it("move, one alone", () => {
    drag(finger(1), 50, 80);
    expect(calls).toEqual([["move", 30]]);
  });

  it("mark while marking, one alone", () => {
    isMarking = true;
    drag(finger(1), 50, 80);
    expect(calls).toEqual([["drag", 50, 80], ["marked", 50, 80]]);
  });

  it("zoom about their middle, two of them, and mark nothing then", () => {
    isMarking = true;
    place.send("pointerdown", { ...finger(1), clientX: 200 });
    place.send("pointerdown", { ...finger(2), clientX: 300 });
    place.send("pointermove", { ...finger(2), clientX: 400 });
    expect(calls).toEqual([["move", 50], ["zoom", 200, 0.5]]);
    place.send("pointerup", { ...finger(1), clientX: 200 });
    place.send("pointerup", { ...finger(2), clientX: 400 });
    expect(calls).toHaveLength(2);
  });
});
