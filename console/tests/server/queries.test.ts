import { describe, expect, it } from "vitest";
import { BadAnswer } from "../../src/server/answers";
import {
  getCounts2d, getHistograms, getRateHistory, getRates, getScatter, isCounting, resetCounts, setCounting,
} from "../../src/server/queries";
import type { Answerer } from "../../src/server/Server";

const path = "processing/0/filter_chain/a/chain/b";
let asked: [string, object][] = [];
function answering(text: string): Answerer {
  asked = [];
  return {
    ask: (route, query) => {
      asked.push([route, query]);
      return Promise.resolve(text);
    },
  };
}

describe("Histograms", () => {
  it("are asked for in one query, each channel once, and come by ascending channel", async () => {
    const found = await getHistograms(answering('[{"data":[1,2]},{"data":[3,4]}]'), path, [7, 2, 7]);
    expect(asked).toEqual([["query_by_json", { path, args: [{ cmd: "get_data", channels: [2, 7] }] }]]);
    expect(found).toEqual([
      { channel: 2, counts: Uint32Array.of(1, 2) },
      { channel: 7, counts: Uint32Array.of(3, 4) },
    ]);
  });

  it("are fewer when channels are beyond the last", async () => {
    const found = await getHistograms(answering('[{"data":[1]}]'), path, [0, 99]);
    expect(found.map(({ channel }) => channel)).toEqual([0]);
  });

  it("have counts of more than 2^31, which the server writes as negative numbers", async () => {
    const [found] = await getHistograms(answering('[{"data":[-1,-2147483648,2147483647]}]'), path, [0]);
    expect([...found!.counts]).toEqual([4294967295, 2147483648, 2147483647]);
  });

  it.each([
    ["", /No block answers for processing\/0/],
    ["[{", /is no JSON: \[\{/],
    ["{}", /holds \{\} where a list should be/],
    ['[{"data":1}]', /holds 1 where a list should be/],
    ['[{"data":[1,"2"]}]', /holds "2" where a count should be/],
    ["[null]", /holds null where an object should be/],
    ['[{"data":[1]},{"data":[1]}]', /answers 2 histograms where 1 were asked for/],
    [`"${"x".repeat(5_000)}`, /is no JSON: "x{76}…$/],
  ])("that come as %s are refused with a reason", async (text, reason) => {
    const failed = getHistograms(answering(text), path, [0]);
    await expect(failed).rejects.toThrow(reason);
    await expect(failed).rejects.toBeInstanceOf(BadAnswer);
  });
});

describe("Maps and images", () => {
  it("are rows of columns", async () => {
    const map = await getCounts2d(answering('{"data":[[1,2,3],[4,5,-6]]}'), path, "heatmap");
    expect(asked[0]![1]).toEqual({ path, args: [{ cmd: "get_data", source: "heatmap" }] });
    expect(map).toEqual({ rows: 2, columns: 3, counts: Uint32Array.of(1, 2, 3, 4, 5, 4294967290) });
  });

  it("may have no rows", async () => {
    const empty = { rows: 0, columns: 0, counts: new Uint32Array(0) };
    expect(await getCounts2d(answering('{"data":[]}'), path, "heatmap")).toEqual(empty);
  });

  it("whose rows differ in length are refused", async () => {
    const ragged = answering('{"data":[[1],[1,2]]}');
    await expect(getCounts2d(ragged, path, "heatmap")).rejects.toThrow(/different lengths: 1 and 2/);
  });

  it("have points with as many columns as shares of energy", async () => {
    const cloud = await getScatter(answering('{"data":[{"x":[1,2]},{"y":[0.25,0.5]}]}'), path);
    expect(cloud).toEqual({ x: Float64Array.of(1, 2), y: Float64Array.of(0.25, 0.5) });
    const uneven = answering('{"data":[{"x":[1]},{"y":[]}]}');
    await expect(getScatter(uneven, path)).rejects.toThrow(/1 columns and 0 shares/);
  });
});

describe("Counting", () => {
  it("is read, set and reset", async () => {
    expect(await isCounting(answering('[{"response": true, "status":"freerun"}]'), path)).toBe(true);
    expect(await isCounting(answering('[{"response": true, "status":"idle"}]'), path)).toBe(false);
    await setCounting(answering('[{"response": true}]'), path, true);
    expect(asked[0]![1]).toEqual({ path, args: [{ cmd: "run_control", status: "freerun" }] });
    await setCounting(answering('[{"response": true}]'), path, false);
    expect(asked[0]![1]).toEqual({ path, args: [{ cmd: "run_control", status: "idle" }] });
    await resetCounts(answering('[{"response": true}]'), path);
    expect(asked[0]![1]).toEqual({ path, args: [{ cmd: "reset" }] });
  });

  it("that is refused fails with the server's words", async () => {
    const refusing = answering('[{"response": "Unknown endpoint"}]');
    await expect(resetCounts(refusing, path)).rejects.toThrow("Unknown endpoint");
    await expect(resetCounts(answering('[{"response": false}]'), path)).rejects.toThrow(/neither yes nor no/);
  });
});

const record = (t: number): string =>
  `{"timestamp":${t},"rates_in":[2.5,1000],"counts_in":[1,2],"rates_out":[2,1000],"counts_out":[3,4]}`;

describe("Rates", () => {
  it("are nothing before the first record", async () => {
    expect(await getRates(answering('{"status": "nodata"}'), path)).toBeNull();
  });

  it("come with counts, by channel", async () => {
    const rates = await getRates(answering(record(7)), path);
    expect(rates).toEqual({
      timestamp: 7,
      ratesIn: Float64Array.of(2.5, 1000),
      countsIn: Float64Array.of(1, 2),
      ratesOut: Float64Array.of(2, 1000),
      countsOut: Float64Array.of(3, 4),
    });
  });

  it("have a history, which the server gives newest first", async () => {
    const history = await getRateHistory(answering(`{"data":[${record(9)},${record(8)}]}`), path);
    expect(history.map(({ timestamp }) => timestamp)).toEqual([8, 9]);
  });
});
