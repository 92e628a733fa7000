import { formatChannels, parseChannels } from "../../analysis/channels";
import { type Block, sizeOf } from "../../model/blocks";
import type { Histogram } from "../../model/data";

/** Channels of a block that are shown. */
export interface Selection {
  block: Block;
  channels: number[];
}

export const mostCurves = 8;

/** All channels of a block are asked for at once only when they hold no more counts than this. */
export function canAskAll(block: Block, mostCounts = 4_000_000): boolean {
  const channels = sizeOf(block, "channels");
  return channels > 0 && channels * sizeOf(block, "bins") <= mostCounts;
}

export function allChannels(block: Block): number[] {
  return Array.from({ length: sizeOf(block, "channels") }, (_, channel) => channel);
}

/** The text for the address: block@channels, joined by semicolons. */
export function selectionText(selections: readonly Selection[], blocks: readonly Block[]): string {
  return selections.map(({ block, channels }) => `${keyOf(block, blocks)}@${formatChannels(channels)}`).join(";");
}

/** The block's name; its path where others have that name. */
function keyOf(block: Block, blocks: readonly Block[]): string {
  const isTwin = blocks.some((other) => other !== block && other.name === block.name);
  return encodeURIComponent(isTwin ? block.path : block.name);
}

/** What the text says of blocks that there are; without a text the first block's first channel. */
export function selectionsOf(text: string | null, blocks: readonly Block[]): Selection[] {
  if (text === null) {
    const [first] = blocks;
    return first === undefined ? [] : [{ block: first, channels: sizeOf(first, "channels") > 0 ? [0] : [] }];
  }
  const found: Selection[] = [];
  for (const part of text.split(";")) {
    const [key = "", channels = ""] = part.split("@", 2);
    const block = blocks.find((known) => keyOf(known, blocks) === key);
    if (block !== undefined && !found.some((selection) => selection.block === block)) {
      found.push({ block, channels: parseChannels(channels, channelCount(block)) ?? [] });
    }
  }
  return atMost(found, mostCurves);
}

/** The blocks that the text names and that aren't there. */
export function missingIn(text: string | null, blocks: readonly Block[]): string[] {
  const named = (text ?? "").split(";").map((part) => part.split("@", 1)[0]!).filter((key) => key !== "");
  return [...new Set(named)].filter((key) => !blocks.some((block) => keyOf(block, blocks) === key)).map(decoded);
}

function decoded(key: string): string {
  try {
    return decodeURIComponent(key);
  } catch {
    return key;
  }
}

/** Where the server doesn't tell how many channels a block has, any may be asked for. */
export function channelCount(block: Block): number {
  return "channels" in block.shape ? sizeOf(block, "channels") : 65536;
}

/** The selections cut to so many curves in all, from the first on. */
export function atMost(selections: readonly Selection[], most: number): Selection[] {
  let left = most;
  return selections.map(({ block, channels }) => {
    const kept = channels.slice(0, Math.max(0, left));
    left -= kept.length;
    return { block, channels: kept };
  });
}

/** The channels with the most counts, in ascending order; none of those without any. */
export function busiest(histograms: readonly Histogram[], most: number): number[] {
  const totals = histograms.map(({ channel, counts }) => ({ channel, total: totalOf(counts) }));
  return totals
    .filter(({ total }) => total > 0)
    .sort((a, b) => b.total - a.total || a.channel - b.channel)
    .slice(0, most)
    .map(({ channel }) => channel)
    .sort((a, b) => a - b);
}

export function totalOf(counts: ArrayLike<number>): number {
  let total = 0;
  for (let i = 0; i < counts.length; ++i) {
    total += counts[i]!;
  }
  return total;
}
