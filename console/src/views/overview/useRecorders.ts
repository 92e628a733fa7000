import { blocks, server } from "../../app/state";
import { usePolled } from "../../app/usePolled";
import { ofType } from "../../model/blocks";
import { type DumpCounts, getDumpCounts, type Recorder, recorders } from "../../server/dumpCounts";
import type { Reading } from "../../server/poll";

export const recordersMs = 2_000;

/** A block that records, and what became of its records. */
export interface Recorded extends Recorder {
  counts: DumpCounts;
}

/** All blocks that can record; null while the blocks aren't known. */
export function knownRecorders(): Recorder[] | null {
  return blocks.value.value && ofType(blocks.value.value, ...recorders);
}

export function useRecorders(): Reading<Recorded[]> {
  const all = knownRecorders() ?? [];
  const ask = (): Promise<Recorded[]> =>
    Promise.all(all.map(async (recorder) => ({ ...recorder, counts: await getDumpCounts(server, recorder) })));
  return usePolled(all.length === 0 ? null : ask, recordersMs, [all.map(({ name }) => name).join("\n")]);
}
