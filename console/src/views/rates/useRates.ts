import { useMemo } from "preact/hooks";
import { server } from "../../app/state";
import { usePolled } from "../../app/usePolled";
import { asArray, asObject, parseJson } from "../../server/answers";
import type { Reading } from "../../server/poll";
import type { Answerer } from "../../server/Server";
import { type KnownRates, RateReader } from "./RateReader";

/** A record comes every half second at most. */
export const ratesMs = 500;

/** The records of a block. */
export function useRates(path: string): Reading<KnownRates> {
  const reader = useMemo(() => new RateReader(server, path), [path]);
  return usePolled(() => reader.read(document.hidden), ratesMs, [path]);
}

/** The names of the channels; those that the configuration doesn't name are missing. */
export async function getChannelNames(asked: Answerer, path: string): Promise<string[]> {
  const answer = parseJson(await asked.ask("query_by_json", { path, args: [{ cmd: "get_channel_map" }] }), path);
  const names = asArray(asObject(answer, path)["channel_map"], path);
  return names.map((name) => (typeof name === "string" ? name : ""));
}
