import { faultOf } from "../../server/poll";
import { getHistograms } from "../../server/queries";
import type { Answerer } from "../../server/Server";
import { curveKey } from "./curveKey";
import type { Selection } from "./selection";

/** A channel's counts, as last asked for. */
export interface LiveCurve {
  key: string;
  label: string;
  counts: ArrayLike<number>;
}

export interface LiveCurves {
  curves: LiveCurve[];
  /** What of the shown can't be read, and why. */
  faults: string[];
}

/** Fails only when nothing of it can be read. */
export async function askFor(answerer: Answerer, selections: readonly Selection[]): Promise<LiveCurves> {
  const answers = await Promise.allSettled(
    selections.map(async ({ block, channels }) => ({
      block,
      channels,
      histograms: await getHistograms(answerer, block.path, channels),
    })),
  );
  const result: LiveCurves = { curves: [], faults: [] };
  for (const answer of answers) {
    if (answer.status === "rejected") {
      result.faults.push(faultOf(answer.reason));
      continue;
    }
    const { block, channels, histograms } = answer.value;
    for (const { channel, counts } of histograms) {
      result.curves.push({ key: curveKey(block.path, channel), label: `${block.name} · ch ${channel}`, counts });
    }
    if (histograms.length < channels.length) {
      const missing = channels.slice(histograms.length).join(", ");
      result.faults.push(`${block.name} has no channel ${missing}: choose lower ones.`);
    }
  }
  if (result.curves.length === 0 && result.faults.length > 0) {
    throw new Error(result.faults.join(" "));
  }
  return result;
}
