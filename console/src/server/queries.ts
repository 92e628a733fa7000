import type { Counts2d, Histogram, PointCloud } from "../model/data";
import {
  asArray,
  asNumber,
  asObject,
  asText,
  BadAnswer,
  countsOf,
  type Json,
  numbersOf,
  parseJson,
} from "./answers";
import { type Answerer, order } from "./Server";

// What is asked of blocks that are found by their path: spectra, time distributions, maps, images, rates.

const byPath = "query_by_json";

export interface SinkCommand {
  cmd: string;
  channels?: number[];
  source?: string;
  status?: string;
}

async function askSink(server: Answerer, path: string, command: SinkCommand): Promise<Json> {
  return parseJson(await server.ask(byPath, { path, args: [command] }), path);
}

async function orderSink(server: Answerer, path: string, command: SinkCommand): Promise<void> {
  expectDone(parseJson(await order(server, byPath, { path, args: [command] }), path), path);
}

/** The counts of the channels, in ascending order of them; channels that the block doesn't have are left out. */
export async function getHistograms(server: Answerer, path: string, channels: number[]): Promise<Histogram[]> {
  const asked = [...new Set(channels)].sort((a, b) => a - b);
  const answer = asArray(await askSink(server, path, { cmd: "get_data", channels: asked }), path);
  if (answer.length > asked.length) {
    throw new BadAnswer(`${path} answers ${answer.length} histograms where ${asked.length} were asked for.`);
  }
  // Only channels beyond the last are left out.
  return answer.map((entry, i) => ({
    channel: asked[i]!,
    counts: countsOf(asObject(entry, path)["data"], path),
  }));
}

/** The rows of a map or image. `source` is "heatmap", "immediate" or "cumulative". */
export async function getCounts2d(server: Answerer, path: string, source: string): Promise<Counts2d> {
  const rows = asArray(asObject(await askSink(server, path, { cmd: "get_data", source }), path)["data"], path);
  const columns = rows.length === 0 ? 0 : asArray(rows[0], path).length;
  const counts = new Uint32Array(rows.length * columns);
  rows.forEach((row, r) => {
    const values = countsOf(row, path);
    if (values.length !== columns) {
      throw new BadAnswer(`${path} answers rows of different lengths: ${columns} and ${values.length}.`);
    }
    counts.set(values, r * columns);
  });
  return { rows: rows.length, columns, counts };
}

/** The points since this was last asked by anybody. */
export async function getScatter(server: Answerer, path: string): Promise<PointCloud> {
  const answer = await askSink(server, path, { cmd: "get_data", source: "scatter" });
  const [x, y] = asArray(asObject(answer, path)["data"], path);
  const cloud = { x: numbersOf(asObject(x, path)["x"], path), y: numbersOf(asObject(y, path)["y"], path) };
  if (cloud.x.length !== cloud.y.length) {
    throw new BadAnswer(`${path} answers ${cloud.x.length} columns and ${cloud.y.length} shares of energy.`);
  }
  return cloud;
}

export async function isCounting(server: Answerer, path: string): Promise<boolean> {
  const [answer] = asArray(await askSink(server, path, { cmd: "data_get_status" }), path);
  return asText(asObject(answer, path)["status"], path) === "freerun";
}

export function setCounting(server: Answerer, path: string, on: boolean): Promise<void> {
  return orderSink(server, path, { cmd: "run_control", status: on ? "freerun" : "idle" });
}

export function resetCounts(server: Answerer, path: string): Promise<void> {
  return orderSink(server, path, { cmd: "reset" });
}

/** Fails with what the server says unless that is that it was done. */
export function expectDone(answer: Json, what: string): void {
  const response = asObject(asArray(answer, what)[0], what)["response"];
  if (response !== true) {
    const said = typeof response === "string" ? response : `The answer for ${what} says neither yes nor no.`;
    throw new BadAnswer(said);
  }
}

export interface Rates {
  timestamp: number;
  ratesIn: Float64Array;
  ratesOut: Float64Array;
  countsIn: Float64Array;
  countsOut: Float64Array;
}

/** The latest record; nothing before the first. */
export async function getRates(server: Answerer, path: string): Promise<Rates | null> {
  const answer = asObject(await askSink(server, path, { cmd: "get_data", source: "immediate" }), path);
  return answer["status"] === "nodata" ? null : ratesOf(answer, path);
}

/** The history, oldest first. */
export async function getRateHistory(server: Answerer, path: string): Promise<Rates[]> {
  const answer = asObject(await askSink(server, path, { cmd: "get_data", source: "data" }), path);
  return asArray(answer["data"], path)
    .map((record) => ratesOf(record, path))
    .reverse();
}

function ratesOf(record: Json, path: string): Rates {
  const values = asObject(record, path);
  return {
    timestamp: asNumber(values["timestamp"], path),
    ratesIn: numbersOf(values["rates_in"], path),
    ratesOut: numbersOf(values["rates_out"], path),
    countsIn: numbersOf(values["counts_in"], path),
    countsOut: numbersOf(values["counts_out"], path),
  };
}
