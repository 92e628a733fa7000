import { useEffect, useState } from "preact/hooks";
import { server } from "../../app/state";
import { usePolled } from "../../app/usePolled";
import { type Block, sizeOf } from "../../model/blocks";
import { getHistograms } from "../../server/queries";
import type { Answerer } from "../../server/Server";
import { totalOf } from "./selection";

const searchMs = 5_000;
const mostBins = 1_000_000;
/** With fewer it is chance which channel leads. */
const enoughCounts = 100;

/** The channel with the most counts so far; `isSettled` when it stays the one that is shown. */
export interface Busiest {
  channel: number;
  isSettled: boolean;
}

/** Null while nothing is counted. All channels are searched; of very many the first: an answer has its limits. */
export async function findBusiest(answerer: Answerer, block: Block): Promise<Busiest | null> {
  const few = Math.floor(mostBins / Math.max(1, sizeOf(block, "bins")));
  const searched = Math.max(1, Math.min(sizeOf(block, "channels"), few));
  let [found, most] = [-1, 0];
  for (const { channel, counts } of await getHistograms(answerer, block.path, [...Array(searched).keys()])) {
    const total = totalOf(counts);
    [found, most] = total > most ? [channel, total] : [found, most];
  }
  return found < 0 ? null : { channel: found, isSettled: most >= enoughCounts };
}

/** Searches until it is settled; null while nothing is known, or no block is given. */
export function useBusiest(block: Block | undefined): Busiest | null {
  const [settled, setSettled] = useState<{ path: string; busiest: Busiest } | null>(null);
  const isDone = settled !== null && settled.path === block?.path;
  const ask = block === undefined || isDone ? null : () => findBusiest(server, block);
  const { value } = usePolled(ask, searchMs, [block?.path ?? "", isDone]);
  useEffect(() => {
    if (block !== undefined && value?.isSettled) {
      setSettled({ path: block.path, busiest: value });
    }
  }, [value]);
  return isDone ? settled.busiest : value;
}
