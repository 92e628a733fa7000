import { describe, expect, test } from "vitest";
import { graphOf } from "../../src/views/chain/graph";
import { entriesOf, trafficOf, type Traffic, troubleOf, widthOf } from "../../src/views/chain/traffic";
import { block, entry } from "./chainOf";

const blocks = [block("source", "s", [], "B"), block("spectrum", "h", ["s:0"])];
const graph = graphOf(blocks); // edges: B to s, s to h

function account(received: number, taken: number, waiting: number, dropped: number) {
  return [
    entry("s", { type: "source", received, outputs: [{ pushed: taken + waiting, dropped, waiting }] }),
    entry("h", { received: taken, inputs: [{ from: "s", pin: 0, taken }] }),
  ];
}

describe("the traffic on the edges", () => {
  test("is what was taken between two accounts, by the time between them", () => {
    const traffic = trafficOf(graph, account(500, 400, 7, 3), account(100, 200, 0, 1), 2);
    expect(traffic).toEqual([
      { rate: 200, waiting: 0, dropped: 0, dropRate: 0, standsStill: false },
      { rate: 100, waiting: 7, dropped: 3, dropRate: 1, standsStill: false },
    ]);
  });

  test("has no rates before two accounts, nor of two at one time", () => {
    for (const [before, seconds] of [[null, 1], [account(0, 0, 0, 0), 0]] as const) {
      trafficOf(graph, account(500, 400, 7, 3), before, seconds).forEach((one) => {
        expect(one).toMatchObject({ rate: null, dropRate: null, standsStill: false });
      });
    }
  });

  test("has no rates when a count fell, as of a server that was started anew", () => {
    const traffic = trafficOf(graph, account(5, 4, 0, 0), account(500, 400, 0, 0), 1);
    expect(traffic.map((one) => one?.rate)).toEqual([null, null]);
  });

  test("stands still when records waited and none was taken", () => {
    expect(trafficOf(graph, account(9, 4, 5, 0), account(6, 4, 2, 0), 1)[1]?.standsStill).toBe(true);
    expect(trafficOf(graph, account(9, 4, 5, 0), account(4, 4, 0, 0), 1)[1]?.standsStill).toBe(false);
  });

  test("isn't known of blocks without an account, of high voltage, and of inputs that it doesn't have", () => {
    const odd = graphOf([block("hv", "v", [], "B"), ...blocks]);
    expect(trafficOf(odd, [undefined, entry("s", { type: "source" }), entry("h")], null, 1)).toEqual([
      null,
      { rate: null, waiting: 0, dropped: 0, dropRate: null, standsStill: false },
      null,
    ]);
  });
});

describe("blocks and the entries of the account", () => {
  test("belong together by path, name and type, whatever their order", () => {
    const [h, s] = [entry("h"), entry("s", { type: "source" })];
    expect(entriesOf(blocks, { balanced: true, entries: [h, s] })).toEqual([s, h]);
  });

  test("belong together in their order where they are alike", () => {
    const twins = [block("spectrum", "h"), block("spectrum", "h"), block("spectrum", "h")];
    const entries = [entry("h", { received: 1 }), entry("h", { received: 2 })];
    expect(entriesOf(twins, { balanced: true, entries })).toEqual([entries[0], entries[1], undefined]);
  });
});

describe("trouble on an edge", () => {
  const fine: Traffic = { rate: 100, waiting: 0, dropped: 0, dropRate: 0, standsStill: false };
  test.each([
    ["nothing", {}, null],
    ["drops now", { dropped: 50, dropRate: 12 }, "drops 12/s"],
    ["earlier drops", { dropped: 1500 }, "1.50 k dropped"],
    ["a queue that nobody empties", { rate: 0, waiting: 30, standsStill: true }, "stuck, 30 wait"],
    ["a queue of three seconds", { waiting: 300 }, "300 wait, 3 s"],
    ["a queue of one second", { waiting: 100 }, null],
    ["a queue before any rate is known", { rate: null, dropRate: null, waiting: 9 }, null],
    ["drops before any rate is known", { rate: null, dropRate: null, dropped: 9 }, "9 dropped"],
  ] as [string, Partial<Traffic>, string | null][])("is told in words: %s", (_, values, text) => {
    expect(troubleOf({ ...fine, ...values })).toBe(text);
  });
});

test("a line is wider for higher rates, and never wider than 12", () => {
  expect(widthOf(null)).toBe(1.5);
  expect(widthOf(0)).toBe(1.5);
  expect(widthOf(-1)).toBe(1.5);
  expect(widthOf(9)).toBeCloseTo(3.2);
  expect(widthOf(999)).toBeCloseTo(5.6);
  expect(widthOf(1e300)).toBe(12);
});
