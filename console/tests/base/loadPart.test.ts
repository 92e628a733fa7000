import { expect, it } from "vitest";
import { loadPart, PartMissing } from "../../src/base/loadPart";

it("hands on a part that is loaded", async () => {
  expect(await loadPart("The fit", () => Promise.resolve(7))).toBe(7);
});

it("says what isn't there, what to do, and why", async () => {
  const loading = loadPart("The fit", () => Promise.reject(new TypeError("not found")));
  await expect(loading).rejects.toThrow(PartMissing);
  await expect(loading).rejects.toThrow("The fit couldn't be loaded; reload the page. (not found)");
});
