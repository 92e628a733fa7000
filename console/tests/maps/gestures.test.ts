import { beforeEach, expect, test } from "vitest";
import { listenToGestures } from "../../src/charts/heat/heatGestures";

class Place extends EventTarget {
  getBoundingClientRect(): { left: number; top: number } {
    return { left: 100, top: 50 };
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

beforeEach(() => {
  place = new Place();
  calls = [];
  listenToGestures(place as unknown as HTMLElement, {
    onPoint: (at) => calls.push(["point", at?.x ?? null, at?.y ?? null]),
    onMove: (width, height) => calls.push(["move", width, height]),
    onZoom: (about, factor) => calls.push(["zoom", about.x, about.y, factor]),
    onWhole: () => calls.push(["whole"]),
  });
});

const mouse = { pointerType: "mouse", pointerId: 1, button: 0 };
const finger = (pointerId: number): object => ({ pointerType: "touch", pointerId, button: 0 });

test("the mouse points, and no more when it left", () => {
  place.send("pointermove", { ...mouse, clientX: 110, clientY: 70 });
  place.send("pointerleave", mouse);
  expect(calls).toEqual([["point", 10, 20], ["point", null, null]]);
});

test("dragging moves, until the button is up", () => {
  place.send("pointerdown", { ...mouse, clientX: 110, clientY: 70 });
  place.send("pointermove", { ...mouse, clientX: 117, clientY: 65 });
  place.send("pointerup", { ...mouse });
  place.send("pointermove", { ...mouse, clientX: 150, clientY: 65 });
  expect(calls).toEqual([["point", 10, 20], ["move", 7, -5], ["point", 17, 15], ["point", 50, 15]]);
});

test("another button than the first doesn't drag", () => {
  place.send("pointerdown", { ...mouse, button: 2, clientX: 110, clientY: 70 });
  place.send("pointermove", { ...mouse, clientX: 117, clientY: 65 });
  expect(calls).toEqual([["point", 17, 15]]);
});

test("two fingers that part zoom in about their middle", () => {
  place.send("pointerdown", { ...finger(1), clientX: 200, clientY: 100 });
  place.send("pointerdown", { ...finger(2), clientX: 300, clientY: 100 });
  calls.length = 0;
  place.send("pointermove", { ...finger(2), clientX: 400, clientY: 100 });
  expect(calls).toEqual([["move", 50, 0], ["zoom", 200, 50, 0.5]]);
});

test("a finger that leaves takes no cursor away", () => {
  place.send("pointerleave", finger(1));
  expect(calls).toEqual([]);
});

test("the wheel zooms where the mouse is, and the page doesn't scroll", () => {
  const turned = { deltaX: 0, deltaY: -3, deltaMode: 1, shiftKey: false };
  const event = place.send("wheel", { clientX: 110, clientY: 70, ...turned });
  expect(calls[0]).toEqual(["zoom", 10, 20, 0.8]);
  expect(event.defaultPrevented).toBe(true);
});

test("the wheel with shift moves sideways", () => {
  place.send("wheel", { clientX: 110, clientY: 70, deltaX: 0, deltaY: 3, deltaMode: 1, shiftKey: true });
  expect(calls[0]).toEqual(["move", -50, 0]);
});

test("a double click shows all", () => {
  place.send("dblclick", {});
  expect(calls).toEqual([["whole"]]);
});
