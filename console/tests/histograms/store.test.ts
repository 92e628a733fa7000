import { beforeEach, describe, expect, it, vi } from "vitest";
import {
  mostRegions,
  storeCalibration,
  storedCalibration,
  storedLines,
  storedRegions,
  storedUnitNs,
  storeLines,
  storeRegions,
  storeUnitNs,
} from "../../src/views/histograms/store";

const kept = new Map<string, string>();
vi.stubGlobal("localStorage", {
  getItem: (key: string) => kept.get(key) ?? null,
  setItem: (key: string, value: string) => void kept.set(key, value),
  removeItem: (key: string) => void kept.delete(key),
});
beforeEach(() => kept.clear());

const line = { bin: 331.2, position: 661.7, unit: "keV" };
const keV = (gain: number) => ({ gain, offset: 1, unit: "keV" });

describe("a calibration", () => {
  it("is the channel's own, or else its block's", () => {
    storeCalibration("a", keV(2));
    storeCalibration("a@1", keV(3));
    expect(storedCalibration("a@0")).toEqual(keV(2));
    expect(storedCalibration("a@1")).toEqual(keV(3));
    expect(storedCalibration("b@1")).toBeNull();
    storeCalibration("a@1", null);
    expect(storedCalibration("a@1")).toEqual(keV(2));
  });
});

describe("what the operator entered", () => {
  it("is kept for each channel or block apart", () => {
    storeLines("a@0", [line]);
    storeUnitNs("a", 0.5);
    storeRegions("a", [{ from: 10, to: 20 }]);
    expect(storedLines("a@0")).toEqual([line]);
    expect(storedLines("a@1")).toEqual([]);
    expect(storedUnitNs("a")).toBe(0.5);
    expect(storedUnitNs("b")).toBeNull();
    expect(storedRegions("a")).toEqual([{ from: 10, to: 20 }]);
    expect(storedRegions("b")).toEqual([]);
  });

  it("can be forgotten", () => {
    storeCalibration("a", keV(2));
    storeLines("a@0", [line]);
    storeUnitNs("a", 1);
    storeRegions("a", [{ from: 10, to: 20 }]);
    storeCalibration("a", null);
    storeLines("a@0", []);
    storeUnitNs("a", null);
    storeRegions("a", []);
    expect(kept.size).toBe(0);
  });

  it("is nothing when something else is kept there", () => {
    for (const text of ["{", "null", "5", '{"gain":0,"offset":0,"unit":"keV"}', '{"gain":"2"}']) {
      kept.set("calibration a", text);
      expect(storedCalibration("a@0")).toBeNull();
    }
    for (const text of ["0", "-1", '"1"', "1e999"]) {
      kept.set("timestamp unit a", text);
      expect(storedUnitNs("a")).toBeNull();
    }
    kept.set("lines a@0", JSON.stringify([null, { ...line, bin: "1" }, { bin: 1, position: 2 }, line]));
    expect(storedLines("a@0")).toEqual([line]);
    const bad = [null, 3, { from: 5, to: 2 }, { from: 1.5, to: 9 }];
    kept.set("regions a", JSON.stringify([...bad, { from: 1, to: 9 }]));
    expect(storedRegions("a")).toEqual([{ from: 1, to: 9 }]);
  });

  it("is at most twelve regions", () => {
    storeRegions("a", Array.from({ length: 20 }, (_, i) => ({ from: i, to: i + 9 })));
    expect(storedRegions("a")).toHaveLength(mostRegions);
  });
});
