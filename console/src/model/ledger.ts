import { asArray, asNumber, asObject, asText, type Json, type JsonObject } from "../server/answers";
import { askCommands } from "../server/runControl";
import type { Answerer } from "../server/Server";

/** What became of a block's records since the server started. */
export interface Entry {
  name: string;
  type: string;
  path: string;
  received: number;
  waiting: number;
  became: Map<string, number>;
  missing: number;
  inHand: number;
  made: number;
  inputs: { from: string; pin: number; taken: number }[];
  outputs: { pushed: number; dropped: number; waiting: number }[];
}

export interface Ledger {
  balanced: boolean;
  entries: Entry[];
}

export async function getLedger(server: Answerer): Promise<Ledger> {
  const ledger = asObject((await askCommands(server, "get_ledger"))["ledger"], what);
  return { balanced: ledger["balanced"] === true, entries: asArray(ledger["blocks"], what).map(entryOf) };
}

const what = "the account of the records";

function entryOf(json: Json): Entry {
  const values = asObject(json, what);
  const count = (of: JsonObject, key: string): number => asNumber(of[key], what);
  const rows = (key: string): JsonObject[] => asArray(values[key], what).map((row) => asObject(row, what));
  const became = Object.entries(asObject(values["became"], what));
  return {
    name: asText(values["name"], what),
    type: asText(values["type"], what),
    path: asText(values["path"], what),
    received: count(values, "received"),
    waiting: count(values, "waiting"),
    became: new Map(became.map(([fate, n]) => [fate, asNumber(n, what)])),
    missing: count(values, "missing"),
    inHand: count(values, "in_hand"),
    made: count(values, "made"),
    inputs: rows("inputs").map((row) => ({
      from: asText(row["from"], what),
      pin: count(row, "pin"),
      taken: count(row, "taken"),
    })),
    outputs: rows("outputs").map((row) => ({
      pushed: count(row, "pushed"),
      dropped: count(row, "dropped"),
      waiting: count(row, "waiting"),
    })),
  };
}

/** Fates that are losses: nobody asked for them. */
const losses: ReadonlySet<string> = new Set(["refused", "dropped", "overwritten", "not_written", "other"]);

/** The records that a block lost, by how; full queues stand as "full_queue". */
export function lossesOf(entry: Entry): Map<string, number> {
  const lost = new Map([...entry.became].filter(([fate, count]) => losses.has(fate) && count > 0));
  const dropped = entry.outputs.reduce((sum, output) => sum + output.dropped, 0);
  if (dropped > 0) {
    lost.set("full_queue", dropped);
  }
  return lost;
}
