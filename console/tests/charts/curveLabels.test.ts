import { describe, expect, it } from "vitest";
import { namedAt, placeLabels } from "../../src/charts/curveLabels";

const area = { left: 0, top: 0, width: 200, height: 100 };

describe("the names of curves", () => {
  it("stand beside their peaks, left of those at the right edge", () => {
    const places = placeLabels([{ x: 20, y: 50, width: 60 }, { x: 180, y: 50, width: 60 }], area, 10);
    expect(places).toEqual([{ x: 30, y: 50 }, { x: 110, y: 50 }]);
  });

  it("never stand over each other, eight of them at one place", () => {
    const places = placeLabels(new Array(8).fill({ x: 20, y: 98, width: 60 }), area, 10);
    expect(places.map(({ y }) => y).sort((a, b) => a - b)).toEqual([25, 35, 45, 55, 65, 75, 85, 95]);
  });

  it("stay within the plot", () => {
    const [over, under] = placeLabels([{ x: 0, y: -7, width: 60 }, { x: 100, y: 300, width: 60 }], area, 10);
    expect([over!.y, under!.y]).toEqual([5, 95]);
    expect(placeLabels([{ x: 50, y: 50, width: 400 }], area, 10)).toEqual([{ x: 0, y: 50 }]);
  });
});

describe("the peak that a name stands at", () => {
  it("is the last of the greatest values that are seen", () => {
    expect(namedAt([9, 1, 5, 5, 2], 1, 4, undefined)).toBe(3);
    expect(namedAt([0, 0, 0], 0, 2, undefined)).toBe(2);
  });

  it("stays while it is nearly the greatest, and seen", () => {
    expect(namedAt([9, 10, 1], 0, 2, 0)).toBe(0);
    expect(namedAt([7, 10, 1], 0, 2, 0)).toBe(1);
    expect(namedAt([9, 10, 1], 1, 2, 0)).toBe(1);
  });

  it("is none of the gaps", () => {
    expect(namedAt([NaN, 4, 3, NaN], 0, 3, undefined)).toBe(1);
  });
});
