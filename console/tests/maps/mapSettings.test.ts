import { expect, test } from "vitest";
import { fixedScaleOf, intervalOf, tableNamed, textOf, windowOf } from "../../src/views/maps/mapSettings";

test("the window is read back as it was written", () => {
  const window = { x: [1.5, 20.123], y: null } as const;
  expect(textOf(window)).toBe("1.5_20.123__");
  expect(windowOf(textOf(window))).toEqual(window);
  expect(textOf({ x: null, y: null })).toBeNull();
});

const senseless = [null, "", "abc", "1__2", "5_1_3_3", "NaN_Infinity_1_Infinity", "___"];

test.each(senseless)("the window %j shows all", (text) => {
  expect(windowOf(text)).toEqual({ x: null, y: null });
});

test("a fixed scale has two ends, and a reason where it has not", () => {
  expect(fixedScaleOf(null)).toBeNull();
  expect(fixedScaleOf("1_250")).toEqual({ low: 1, high: 250, fault: null });
  expect(fixedScaleOf("9_2")?.fault).toContain("above the minimum");
  expect(fixedScaleOf("_2")?.fault).toContain("numbers");
  expect(fixedScaleOf("x")?.fault).toContain("numbers");
});

test("an unknown table or interval is the first one", () => {
  expect(tableNamed("grey").name).toBe("grey");
  expect(tableNamed("neon").name).toBe("dawn");
  expect(tableNamed(null).name).toBe("dawn");
  expect(intervalOf("2000")).toBe(2000);
  expect(intervalOf("1")).toBe(500);
  expect(intervalOf(null)).toBe(500);
});
