import { expect, it } from "vitest";
import { spanNote } from "../../src/views/rates/spanNote";

it("has nothing to say of rates over about the time that was asked for, or since the start", () => {
  expect(spanNote(10, 10, 1e-9)).toBeNull();
  expect(spanNote(10, 14.9, 1e-9)).toBeNull();
  expect(spanNote(10, NaN, 1e-9)).toBeNull();
  expect(spanNote(null, 1_000, 1e-9)).toBeNull();
  expect(spanNote(null, 1_000, null)).toBeNull();
});

it("says over how long the rates are where records are far apart", () => {
  expect(spanNote(10, 60.4, 1e-9)).toBe("These are the rates over 60 s: no record came in between.");
});

it("says that rates are since the start while the unit of timestamps isn't known", () => {
  expect(spanNote(10, 12, null)).toMatch(
    /^These are the rates since the server's start, not those over the last 10 s\. .*wait, or enter it\.$/,
  );
});
