import { useRef } from "preact/hooks";
import { server } from "../../app/state";
import { usePolled } from "../../app/usePolled";
import { asArray, asObject, parseJson } from "../../server/answers";
import type { Reading } from "../../server/poll";
import { getRateHistory, getRates, type Rates } from "../../server/queries";
import type { Answerer } from "../../server/Server";
import { RateLog } from "./RateLog";

/** A record comes every half second at most. */
export const ratesMs = 500;

export interface KnownRates {
  /** Oldest first. */
  records: readonly Rates[];
  /** When the last of them was first seen, as Date.now() tells. */
  newestAt: number;
}

/** The records of a block: the server's history once, as it may be long, and from then on each latest one. */
export function useRates(path: string): Reading<KnownRates> {
  const known = useRef<{ path: string; log: RateLog; newestAt: number } | null>(null);
  return usePolled(
    async () => {
      if (known.current?.path !== path) {
        known.current = { path, log: await logOf(server, path), newestAt: Date.now() };
      }
      const latest = await getRates(server, path);
      if (latest !== null && known.current.log.add(latest)) {
        known.current.newestAt = Date.now();
      }
      return { records: known.current.log.records, newestAt: known.current.newestAt };
    },
    ratesMs,
    [path],
  );
}

async function logOf(asked: Answerer, path: string): Promise<RateLog> {
  const log = new RateLog();
  (await getRateHistory(asked, path)).forEach((record) => log.add(record));
  return log;
}

/** The names of the channels; those that the configuration doesn't name are missing. */
export async function getChannelNames(asked: Answerer, path: string): Promise<string[]> {
  const answer = parseJson(await asked.ask("query_by_json", { path, args: [{ cmd: "get_channel_map" }] }), path);
  const names = asArray(asObject(answer, path)["channel_map"], path);
  return names.map((name) => (typeof name === "string" ? name : ""));
}
