import { describe, expect, it } from "vitest";
import {
  atMost,
  busiest,
  canAskAll,
  channelCount,
  missingIn,
  selectionsOf,
  selectionText,
  totalOf,
} from "../../src/views/histograms/selection";
import { block } from "./blocks";

const a = block("spectrum0", 256, 2048);
const b = block("spectrum 1;@", 8, 16384);
const twin = { ...block("spectrum0", 4, 100), path: "other/spectrum0" };

describe("what is shown", () => {
  it("is kept in the address by the blocks' names", () => {
    const chosen = [{ block: a, channels: [0, 1, 2, 7] }, { block: b, channels: [3] }];
    const text = selectionText(chosen, [a, b]);
    expect(text).toBe("spectrum0@0-2,7;spectrum%201%3B%40@3");
    expect(selectionsOf(text, [a, b])).toEqual(chosen);
  });

  it("is kept by the path where a name stands twice", () => {
    const text = selectionText([{ block: twin, channels: [2] }], [a, twin]);
    expect(text).toBe("other%2Fspectrum0@2");
    expect(selectionsOf(text, [a, twin])).toEqual([{ block: twin, channels: [2] }]);
  });

  it("is the first block's first channel at first", () => {
    expect(selectionsOf(null, [a, b])).toEqual([{ block: a, channels: [0] }]);
    expect(selectionsOf(null, [block("none", 0, 5)])[0]!.channels).toEqual([]);
    expect(selectionsOf(null, [])).toEqual([]);
  });

  it("leaves out blocks that aren't there, repeated ones and nonsense", () => {
    expect(selectionsOf("gone@1;spectrum0@5;spectrum0@6", [a])).toEqual([{ block: a, channels: [5] }]);
    expect(selectionsOf("spectrum0@x", [a])).toEqual([{ block: a, channels: [] }]);
    expect(selectionsOf("", [a])).toEqual([]);
  });

  it("tells which blocks aren't there, each once", () => {
    expect(missingIn("gone@1;spectrum0@5;g%C3%B6ne@2;gone@3", [a])).toEqual(["gone", "göne"]);
    expect(missingIn("%@1", [a])).toEqual(["%"]);
    expect(missingIn("", [a])).toEqual([]);
    expect(missingIn(null, [a])).toEqual([]);
  });

  it("is never more than eight curves", () => {
    const chosen = selectionsOf("spectrum0@0-5;spectrum%201%3B%40@0-5", [a, b]);
    expect(chosen.map(({ channels }) => channels)).toEqual([[0, 1, 2, 3, 4, 5], [0, 1]]);
    expect(atMost([{ block: a, channels: [1, 2] }], -1)[0]!.channels).toEqual([]);
  });
});

describe("a block", () => {
  it("is asked for all of its channels only when they are few enough", () => {
    expect(canAskAll(block("x", 256, 2048))).toBe(true);
    expect(canAskAll(block("x", 4000, 1000))).toBe(true);
    expect(canAskAll(block("x", 4001, 1000))).toBe(false);
    expect(canAskAll(block("x", 0, 1000))).toBe(false);
  });

  it("may be asked for any channel when the server doesn't tell how many it has", () => {
    expect(channelCount({ ...a, shape: {} })).toBe(65536);
    expect(channelCount(a)).toBe(256);
  });
});

describe("the busiest channels", () => {
  const histograms = [[1, 1], [5, 0], [0, 0], [3, 3], [4, 1]].map((counts, channel) => ({
    channel,
    counts: Uint32Array.from(counts),
  }));

  it("have the most counts", () => {
    expect(busiest(histograms, 2)).toEqual([1, 3]);
    expect(busiest(histograms, 3)).toEqual([1, 3, 4]);
  });

  it("are none of those without counts", () => {
    expect(busiest(histograms, 9)).toEqual([0, 1, 3, 4]);
    expect(busiest([], 4)).toEqual([]);
    expect(busiest(histograms, 0)).toEqual([]);
  });

  it("are told by sums that don't wrap", () => {
    expect(totalOf(new Uint32Array([4294967295, 4294967295]))).toBe(8589934590);
  });
});
