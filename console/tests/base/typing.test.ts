import { expect, it } from "vitest";
import { plainKey } from "../../src/base/typing";

it("hears a letter as the same key with Caps Lock, and leaves the names of keys as they are", () => {
  const keys = ["l", "L", " ", "]", "ArrowLeft", "Home"].map((key) => plainKey({ key }));
  expect(keys).toEqual(["l", "l", " ", "]", "ArrowLeft", "Home"]);
});
