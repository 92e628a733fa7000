import type { Block } from "../model/blocks";
import { asArray, asNumber, asObject, parseJson } from "./answers";
import { type RunStatus, statusOf } from "./runControl";
import type { Answerer } from "./Server";

/** Whether a recorder records, and what became of its records since the start of the run. */
export interface DumpCounts {
  status: RunStatus;
  recorded: number;
  failed: number;
  dropped: number;
  overwritten: number;
}

export type Recorder = Pick<Block, "type" | "name" | "path">;

/** Types of blocks that record. */
export const recorders = ["dumper", "oscilloscope", "rate_counters_sink"] as const;

/** Of one of these; rates are found by their path, the others by their name. */
export async function getDumpCounts(server: Answerer, { type, name, path }: Recorder): Promise<DumpCounts> {
  const cmd = "get_dump_counts";
  const isByPath = type === "rate_counters_sink";
  const text = await (isByPath
    ? server.ask("query_by_json", { path, args: [{ cmd }] })
    : server.ask(name, { cmd }));
  const what = `the run's losses in ${name}`;
  const counts = asObject(asArray(parseJson(text, what), what)[0], what);
  const count = (key: string): number => asNumber(counts[key], what);
  return {
    status: statusOf(counts["status"]),
    recorded: count("recorded"),
    failed: count("failed"),
    dropped: count("dropped"),
    overwritten: count("overwritten"),
  };
}
