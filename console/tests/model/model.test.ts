import { describe, expect, it } from "vitest";
import { getBlocks, ofType, sizeOf } from "../../src/model/blocks";
import { FlowTracker } from "../../src/model/flow";
import { type Entry, getLedger, lossesOf } from "../../src/model/ledger";
import { isDated, nextOfDay, nextRunId, proposeRunId, runIdFault } from "../../src/model/runId";
import { patienceMs, pulseOf } from "../../src/model/silence";

const answering = (text: string): { ask: () => Promise<string> } => ({ ask: () => Promise.resolve(text) });

const entry = (received: number, more: Partial<Entry> = {}): Entry => ({
  name: "source0", type: "source", path: "p", received, waiting: 0, became: new Map([["decoded", received]]),
  missing: 0, inHand: 0, made: received, inputs: [],
  outputs: [{ pushed: received, dropped: 0, waiting: 0 }], ...more,
});
const ledger = (...entries: Entry[]): { balanced: boolean; entries: Entry[] } => ({ balanced: true, entries });

describe("The list of blocks", () => {
  it("is read with links and shape", async () => {
    const [block] = await getBlocks(
      answering(
        '{"blocks":[{"type":"spectrum","name":"s","path":"p/s","links":[{"from":"t","pin":1}],"outputs":0,' +
          '"shape":{"channels":4,"bins":-1}}]}',
      ),
    );
    expect(block).toEqual({
      type: "spectrum",
      name: "s",
      path: "p/s",
      links: [{ from: "t", pin: 1 }],
      outputs: 0,
      shape: { channels: 4, bins: -1 },
    });
    expect([sizeOf(block!, "channels"), sizeOf(block!, "bins"), sizeOf(block!, "none")]).toEqual([4, 0, 0]);
    expect(ofType([block!], "image", "spectrum")).toHaveLength(1);
    expect(ofType([block!], "image")).toHaveLength(0);
  });
});

describe("The account", () => {
  it("is read as the server writes it", async () => {
    const read = await getLedger(
      answering(
        '{"ledger":{"balanced":true,"blocks":[{"became":{"left_out":0,"written":3},"in_hand":0,' +
          '"inputs":[{"from":"rates_source1","pin":0,"taken":4}],"made":0,"missing":0,"name":"rates1","outputs":[],' +
          '"path":"p","received":4,"type":"rate_counters_sink","waiting":1}],"time":"t"}}',
      ),
    );
    expect(read).toEqual({
      balanced: true,
      entries: [
        {
          name: "rates1", type: "rate_counters_sink", path: "p", received: 4, waiting: 1,
          became: new Map([["left_out", 0], ["written", 3]]), missing: 0, inHand: 0, made: 0,
          inputs: [{ from: "rates_source1", pin: 0, taken: 4 }], outputs: [],
        },
      ],
    });
  });

  it("tells losses, those at full queues among them, and nothing else", () => {
    const lossy = entry(10, {
      became: new Map([["decoded", 5], ["refused", 5], ["dropped", 0], ["while_stopped", 7], ["cut", 8]]),
      outputs: [{ pushed: 1, dropped: 2, waiting: 0 }, { pushed: 1, dropped: 3, waiting: 0 }],
    });
    expect([...lossesOf(lossy)]).toEqual([["refused", 5], ["full_queue", 5]]);
  });
});

describe("The flow", () => {
  const unknown = { rate: null, lossRate: null, lastData: 1_000, hasMoved: false, pauses: [], lastLoss: null };

  it("is unknown at first, then what came between two accounts", () => {
    const tracker = new FlowTracker();
    const known = { lossRate: 0, lastData: 3_000, hasMoved: true, pauses: [], lastLoss: null };
    expect(tracker.add(ledger(entry(100)), 1_000)).toEqual([unknown]);
    expect(tracker.add(ledger(entry(300)), 3_000)).toEqual([{ ...known, rate: 100 }]);
    expect(tracker.add(ledger(entry(300)), 4_000)).toEqual([{ ...known, rate: 0 }]);
  });

  it("counts losses a second", () => {
    const tracker = new FlowTracker();
    const losing = (n: number): Entry => entry(10, { outputs: [{ pushed: 0, dropped: n, waiting: 0 }] });
    tracker.add(ledger(losing(1)), 0);
    expect(tracker.add(ledger(losing(7)), 2_000)[0]!).toMatchObject({ lossRate: 3, lastLoss: 2_000 });
    expect(tracker.add(ledger(losing(7)), 3_000)[0]!).toMatchObject({ lossRate: 0, lastLoss: 2_000 });
  });

  it("begins anew with a server that was started anew, and with another chain", () => {
    const tracker = new FlowTracker();
    tracker.add(ledger(entry(100)), 0);
    expect(tracker.add(ledger(entry(5)), 1_000)[0]).toEqual(unknown);
    expect(tracker.add(ledger(entry(6, { name: "other" })), 2_000)[0]!.rate).toBeNull();
  });

  it("remembers how long nothing came, as far as that is sure", () => {
    const tracker = new FlowTracker();
    const pausesAfter = (received: number, at: number): readonly number[] =>
      tracker.add(ledger(entry(received)), at)[0]!.pauses;
    pausesAfter(0, 0);
    expect(pausesAfter(1, 10_000)).toEqual([]); // watched, but how long it was silent before isn't known
    expect(pausesAfter(2, 11_000)).toEqual([0]);
    pausesAfter(2, 12_000);
    pausesAfter(2, 13_000);
    expect(pausesAfter(3, 14_000)).toEqual([0, 2_000]);
    expect(pausesAfter(4, 24_000)).toEqual([0, 2_000, 0]); // a page that asked seldom knows nothing of pauses
    for (let i = 0; i < 100; ++i) {
      pausesAfter(5 + i, 25_000 + i);
    }
    expect(pausesAfter(200, 30_000)).toHaveLength(60);
  });

  it("tells two blocks of one name apart", () => {
    const tracker = new FlowTracker();
    tracker.add(ledger(entry(0), entry(0)), 0);
    expect(tracker.add(ledger(entry(1), entry(2)), 1_000).map(({ rate }) => rate)).toEqual([1, 2]);
  });

  it("has no rate where the clock stood still", () => {
    const tracker = new FlowTracker();
    tracker.add(ledger(entry(0)), 5);
    expect(tracker.add(ledger(entry(1)), 5)[0]!.rate).toBeNull();
  });
});

describe("A source", () => {
  const flow = { rate: 0, lossRate: 0, lastData: 10_000, hasMoved: true, pauses: [], lastLoss: null };
  it("that gave data just now is flowing", () =>
    expect(pulseOf(flow, 12_999)).toEqual({ state: "flowing", text: "data flow" }));
  it("that is silent says for how long", () => {
    expect(pulseOf(flow, 22_000)).toEqual({ state: "quiet", text: "no data for 12 s" });
    expect(pulseOf(flow, 10_000 + 150_000)).toEqual({ state: "quiet", text: "no data for 2 min" });
  });
  it("that never gave data since the page was opened says only that", () =>
    expect(pulseOf({ ...flow, hasMoved: false }, 22_000)).toEqual({
      state: "quiet",
      text: "no data, watched for 12 s",
    }));
  it("is waited for as long as its own rhythm tells, within limits", () => {
    expect([[], [0, 0, 0], [9_000], [200, 100]].map(patienceMs)).toEqual([3_000, 3_000, 3_000, 3_000]);
    expect(patienceMs([0, 4_000, 0, 4_500])).toBe(20_000);
    expect(patienceMs([8_000, 8_000])).toBe(30_000);
  });
  it("that is slow isn't called silent between two of its data", () => {
    const slow = { ...flow, pauses: [4_000, 4_000, 4_000] };
    expect(pulseOf(slow, 29_999).state).toBe("flowing");
    expect(pulseOf(slow, 30_000)).toEqual({ state: "quiet", text: "no data for 20 s" });
  });
  it("that nothing is known of is waited for", () => {
    expect(pulseOf(undefined, 0).state).toBe("waiting");
    expect(pulseOf({ ...flow, rate: null }, 99_000).state).toBe("waiting");
    expect(pulseOf({ ...flow, hasMoved: false }, 11_000).state).toBe("waiting");
  });
});

describe("A run's id", () => {
  it("is proposed from the date", () => expect(proposeRunId(new Date(2026, 2, 5), 7)).toBe("2026-03-05_007"));
  it("is proposed behind the last one of the day that is taken, wherever that is known from", () => {
    const day = new Date(2026, 2, 5);
    const behind = (...taken: (string | null | undefined)[]): string => nextOfDay(day, taken);
    expect(behind(undefined, null)).toBe("2026-03-05_001");
    expect(behind("2026-03-05_004", null)).toBe("2026-03-05_005");
    expect(behind("2026-03-05_004", "2026-03-05_002")).toBe("2026-03-05_005");
    expect(behind("2026-03-05_999", "2026-03-05_1000")).toBe("2026-03-05_1001");
    expect(behind("2026-03-04_009", "2026-03-04_010")).toBe("2026-03-05_001");
    expect(behind("night_7", null)).toBe("2026-03-05_001");
  });
  it("is told from a name that somebody gave", () => {
    expect(["2026-03-05_001", "2026-03-05_1000", "2026-03-05_test", "night_7", ""].map(isDated)).toEqual([
      true, true, false, false, false,
    ]);
  });
  it("is followed by the next number, as wide as it was", () => {
    expect(["a_001", "a_099", "9", "a999", "run", ""].map(nextRunId)).toEqual([
      "a_002", "a_100", "10", "a1000", "run_2", "_2",
    ]);
  });
  it("can be a folder's name, and nothing that leads elsewhere", () => {
    expect(["12", "night 3", "a.b", "…"].map(runIdFault)).toEqual([null, null, null, null]);
    for (const id of ["", "  ", "a/b", "..", ".", "a\\b", "a\0"]) {
      expect(runIdFault(id)).not.toBeNull();
    }
  });

  it("is no longer than a folder's name can be", () => {
    expect([runIdFault("a".repeat(255)), runIdFault("é".repeat(127))]).toEqual([null, null]);
    expect(runIdFault("a".repeat(256))).toContain("255 letters");
    expect(runIdFault("é".repeat(128))).not.toBeNull();
  });
});
