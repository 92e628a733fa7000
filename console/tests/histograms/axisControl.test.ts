import { beforeEach, describe, expect, it, vi } from "vitest";
import { axisControlOf } from "../../src/views/histograms/axisControl";
import { residualOf } from "../../src/views/histograms/knownLines";
import { storedCalibration } from "../../src/views/histograms/store";

const kept = new Map<string, string>();
vi.stubGlobal("localStorage", {
  getItem: (key: string) => kept.get(key) ?? null,
  setItem: (key: string, value: string) => void kept.set(key, value),
  removeItem: (key: string) => void kept.delete(key),
});
beforeEach(() => kept.clear());

const line = (bin: number, position: number) => ({ bin, position, unit: "keV" });
const around = (bin: number) => ({ from: bin - 10, to: bin + 10 });
const keV = (gain: number, offset = 0) => ({ gain, offset, unit: "keV" });

/** Tells of lines, one after the other. */
function tell(...told: [number, number][]): void {
  for (const [bin, position] of told) {
    expect(axisControlOf("a@0").addLine(line(bin, position), around(bin))).toBe(true);
  }
}

describe("known lines", () => {
  it("make the axis: one through zero, two with an offset", () => {
    tell([100, 200]);
    expect(axisControlOf("a@0").entered).toEqual(keV(2));
    tell([200, 500]);
    expect(axisControlOf("a@0").entered).toEqual(keV(3, -100));
    expect(storedCalibration("a@1")).toBeNull();
  });

  it("stand off an axis that can't go through all of them", () => {
    tell([100, 100], [200, 206], [300, 300]);
    const { lines, entered } = axisControlOf("a@0");
    const off = lines.map((known) => residualOf(known, entered!));
    expect(off).toEqual([-2, 4, -2].map((expected) => expect.closeTo(expected, 9)));
    expect(residualOf(lines[0]!, { ...entered!, unit: "MeV" })).toBeNull();
  });

  it("take the place of what was told of the same peak", () => {
    tell([100, 200], [200, 400], [202, 606]);
    expect(axisControlOf("a@0").lines).toEqual([line(100, 200), line(202, 606)]);
  });

  it("change nothing when no axis rises through them", () => {
    tell([100, 200]);
    expect(axisControlOf("a@0").addLine(line(200, 100), around(200))).toBe(false);
    expect(axisControlOf("a@0")).toMatchObject({ lines: [line(100, 200)], entered: keV(2) });
  });

  it("go one by one, and the axis goes through those that are left", () => {
    tell([100, 200], [200, 500]);
    const remove = (i: number): void => axisControlOf("a@0").removeLine(axisControlOf("a@0").lines[i]!);
    remove(0);
    expect(axisControlOf("a@0")).toMatchObject({ lines: [line(200, 500)], entered: keV(2.5) });
    remove(0);
    expect(axisControlOf("a@0")).toMatchObject({ lines: [], entered: null });
    expect(kept.size).toBe(0);
  });

  it("go without the axis when that was entered otherwise", () => {
    tell([100, 200]);
    axisControlOf("a@0").set(keV(7));
    axisControlOf("a@0").removeLine(axisControlOf("a@0").lines[0]!);
    expect(axisControlOf("a@0")).toMatchObject({ lines: [], entered: keV(7) });
  });
});

describe("a calibration for all channels", () => {
  it("holds where a channel has none of its own", () => {
    axisControlOf("a@1").set(keV(5));
    axisControlOf("a@0").set(keV(2));
    axisControlOf("a@0").share();
    expect(["a@0", "a@1", "a@2"].map((curve) => axisControlOf(curve)).map(({ entered, isShared }) => [
      entered!.gain, isShared,
    ])).toEqual([[2, true], [5, false], [2, true]]);
  });

  it("is forgotten where it is shown, and a channel's own before it", () => {
    axisControlOf("a@0").set(keV(2));
    axisControlOf("a@0").share();
    axisControlOf("a@0").set(keV(3));
    axisControlOf("a@0").set(null);
    expect(axisControlOf("a@0")).toMatchObject({ entered: keV(2), isShared: true });
    axisControlOf("a@0").set(null);
    expect(axisControlOf("a@1").entered).toBeNull();
  });
});
