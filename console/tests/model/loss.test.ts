import { describe, expect, it } from "vitest";
import type { Flow } from "../../src/model/flow";
import type { Entry } from "../../src/model/ledger";
import { lossOf } from "../../src/model/loss";

const entry = (became: [string, number][], dropped: number): Entry => ({
  name: "a", type: "source", path: "p", received: 1_000, waiting: 0, became: new Map(became), missing: 0,
  inHand: 0, made: 0, inputs: [], outputs: [{ pushed: 0, dropped, waiting: 0 }],
});
const flow = (lastLoss: number | null, lossRate: number | null): Flow => ({
  rate: 1, lossRate, lastData: 0, hasMoved: true, pauses: [], lastLoss,
});
const timeOf = (time: number): string => `<${time}>`;

describe("A block's losses", () => {
  it("are none where nothing was lost, whatever else became of its records", () =>
    expect(lossOf(entry([["decoded", 9], ["cut", 3]], 0), flow(null, 0), 0, timeOf)).toBeNull());

  it("are losses of now while they go on, and ten seconds longer", () => {
    const lossy = entry([["refused", 5]], 1_200);
    const what = "5 refused, 1\u202f200 full queue since the server's start";
    expect(lossOf(lossy, flow(50_000, 12.34), 50_000, timeOf)).toEqual({
      isNow: true, count: 1_205, text: `${what}, 12.3 /s now`,
    });
    expect(lossOf(lossy, flow(50_000, 0), 59_999, timeOf)).toEqual({
      isNow: true, count: 1_205, text: `${what}, last at <50000>`,
    });
    expect(lossOf(lossy, flow(50_000, 0), 60_000, timeOf)).toMatchObject({ isNow: false });
  });

  it("that happened before the page was opened are old ones, of an unknown time", () => {
    for (const known of [flow(null, null), flow(null, 0), undefined]) {
      expect(lossOf(entry([], 7), known, 1_000, timeOf)).toEqual({
        isNow: false, count: 7, text: "7 full queue since the server's start, none while this page looked on",
      });
    }
  });
});
