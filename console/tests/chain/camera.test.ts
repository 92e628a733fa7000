import { describe, expect, test } from "vitest";
import { cameraText, fit, pan, parseCamera, reveal, zoom } from "../../src/views/chain/camera";

const window = { width: 400, height: 200 };

describe("the camera", () => {
  test("shows all of a wide picture, in the middle", () => {
    expect(fit({ width: 800, height: 100 }, window)).toEqual({ x: 0, y: -150, scale: 0.5 });
  });

  test("doesn't blow up a small picture, nor one without size", () => {
    expect(fit({ width: 10, height: 10 }, window).scale).toBe(1.5);
    expect(fit({ width: 0, height: 0 }, window).scale).toBe(1.5);
    expect(fit({ width: 0, height: 0 }, { width: 0, height: 0 }).scale).toBe(1);
  });

  test("keeps the point below the mouse where it is when it zooms", () => {
    // Point (100, 50) of the window shows (60, 35) of the picture before and after.
    expect(zoom({ x: 10, y: 10, scale: 2 }, 2, 100, 50)).toEqual({ x: 35, y: 22.5, scale: 4 });
  });

  test("zooms neither in nor out without end", () => {
    const camera = { x: 0, y: 0, scale: 1 };
    expect(zoom(camera, 1e9, 0, 0).scale).toBe(4);
    expect(zoom(camera, 1e-9, 0, 0).scale).toBe(0.02);
  });

  test("follows the finger", () => {
    expect(pan({ x: 10, y: 10, scale: 2 }, 20, -40)).toEqual({ x: 0, y: 30, scale: 2 });
  });

  test("moves no further than what is to be seen needs", () => {
    const camera = { x: 0, y: 0, scale: 1 };
    expect(reveal(camera, { x: 10, y: 10, width: 50, height: 50 }, window)).toBe(camera);
    expect(reveal(camera, { x: 380, y: 10, width: 50, height: 50 }, window)).toEqual({ x: 30, y: 0, scale: 1 });
    const corner = { x: -30, y: 300, width: 50, height: 50 };
    expect(reveal(camera, corner, window)).toEqual({ x: -30, y: 150, scale: 1 });
    expect(reveal(camera, { x: 90, y: 0, width: 900, height: 50 }, window)).toEqual({ x: 90, y: 0, scale: 1 });
  });

  test("is kept in the address", () => {
    expect(cameraText({ x: 12.4, y: -3.6, scale: 0.51234 })).toBe("12.40,-3.60,0.5123");
    expect(parseCamera("12.40,-3.60,0.5123")).toEqual({ x: 12.4, y: -3.6, scale: 0.5123 });
  });

  test.each([null, "", "1,2", "1,2,3,4", "a,b,c", "1,,2", "1,2,0", "1,2,-1", "1,2,NaN", "Infinity,2,1"])(
    "isn't taken from %j",
    (text) => expect(parseCamera(text)).toBeNull(),
  );

  test("is brought within its limits when the address is beyond them", () => {
    expect(parseCamera("0,0,1e9")?.scale).toBe(4);
  });
});
