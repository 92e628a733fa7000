import { beforeEach, describe, expect, it, vi } from "vitest";
import {
  knownLines,
  mostRegions,
  storeCalibration,
  storedCalibration,
  storedRegions,
  storeRegions,
} from "../../src/views/histograms/store";

const kept = new Map<string, string>();
vi.stubGlobal("localStorage", {
  getItem: (key: string) => kept.get(key) ?? null,
  setItem: (key: string, value: string) => void kept.set(key, value),
  removeItem: (key: string) => void kept.delete(key),
});
beforeEach(() => kept.clear());

const known = { bin: 331.2, position: 661.7, curve: "a@0" };

describe("what the operator entered", () => {
  it("is kept for each block apart", () => {
    storeCalibration("a", { gain: 2, offset: 1, unit: "keV" });
    storeRegions("a", [{ from: 10, to: 20, known }]);
    expect(storedCalibration("a")).toEqual({ gain: 2, offset: 1, unit: "keV" });
    expect(storedRegions("a")).toEqual([{ from: 10, to: 20, known }]);
    expect(storedCalibration("b")).toBeNull();
    expect(storedRegions("b")).toEqual([]);
  });

  it("can be forgotten", () => {
    storeCalibration("a", { gain: 2, offset: 1, unit: "keV" });
    storeRegions("a", [{ from: 10, to: 20 }]);
    storeCalibration("a", null);
    storeRegions("a", []);
    expect(kept.size).toBe(0);
  });

  it("is nothing when something else is kept there", () => {
    for (const text of ["{", "null", "5", '{"gain":0,"offset":0,"unit":"keV"}', '{"gain":"2"}']) {
      kept.set("calibration a", text);
      expect(storedCalibration("a")).toBeNull();
    }
    const bad = [null, 3, { from: 5, to: 2 }, { from: 1.5, to: 9 }, { from: 1, to: 9, known: 3 }];
    kept.set("regions a", JSON.stringify([...bad, { from: 1, to: 9 }]));
    expect(storedRegions("a")).toEqual([{ from: 1, to: 9 }]);
  });

  it("is at most twelve regions", () => {
    storeRegions("a", Array.from({ length: 20 }, (_, i) => ({ from: i, to: i + 9 })));
    expect(storedRegions("a")).toHaveLength(mostRegions);
  });
});

describe("known lines", () => {
  it("are those of the curve", () => {
    const other = { ...known, curve: "a@1" };
    const regions = [{ from: 1, to: 9, known }, { from: 2, to: 9 }, { from: 3, to: 9, known: other }];
    expect(knownLines(regions, "a@0")).toEqual([known]);
  });
});
