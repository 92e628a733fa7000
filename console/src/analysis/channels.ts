// Channels as operators write them and as the address has them: "0, 3, 8-11".

/** Channels that are asked for at once at most. */
const mostNamed = 64;

interface Range {
  from: number;
  to: number;
}

/** One channel or a rising range; null when it is neither. */
function rangeOf(piece: string): Range | null {
  const match = /^(\d{1,9})(?:-(\d{1,9}))?$/.exec(piece);
  const [from, to] = [Number(match?.[1]), Number(match?.[2] ?? match?.[1])];
  return match === null || to < from ? null : { from, to };
}

/** Ascending, without those that don't exist. */
function channelsIn(ranges: readonly Range[], channels: number): number[] {
  const found = new Set<number>();
  for (const { from, to } of ranges) {
    for (let channel = from; channel <= Math.min(to, channels - 1) && found.size < mostNamed; ++channel) {
      found.add(channel);
    }
  }
  return [...found].sort((a, b) => a - b);
}

function piecesOf(text: string): string[] {
  return text.replace(/\s*[-–]\s*/g, "-").split(/[,;\s]+/).filter((piece) => piece !== "");
}

/** The channels that an operator entered, ascending; null when one of them is none of the `channels` there are. */
export function parseChannels(text: string, channels: number): number[] | null {
  const ranges = piecesOf(text).map(rangeOf);
  return ranges.every((range) => range !== null && range.from < channels)
    ? channelsIn(ranges as Range[], channels)
    : null;
}

/** The channels in an address: anything else in it is left out. */
export function channelsOfAddress(text: string, channels: number): number[] {
  return channelsIn(piecesOf(text).flatMap((piece) => rangeOf(piece) ?? []), channels);
}

/** Ranges of three and more are shortened. */
export function formatChannels(channels: readonly number[]): string {
  const sorted = [...new Set(channels)].sort((a, b) => a - b);
  const parts: string[] = [];
  for (let i = 0; i < sorted.length; ) {
    let end = i;
    while (sorted[end + 1] === sorted[end]! + 1) {
      ++end;
    }
    parts.push(...(end - i > 1 ? [`${sorted[i]}-${sorted[end]}`] : sorted.slice(i, end + 1).map(String)));
    i = end + 1;
  }
  return parts.join(",");
}

/** With the channel when it was missing, else without. */
export function toggled(channels: readonly number[], channel: number): number[] {
  const without = channels.filter((other) => other !== channel);
  return without.length < channels.length ? without : [...without, channel].sort((a, b) => a - b);
}

/** The next channels (1) or those before (-1), as many as these reach over; the same ones at the end. */
export function shifted(chosen: readonly number[], direction: 1 | -1, channels: number): number[] {
  if (chosen.length === 0) {
    return channels > 0 ? [0] : [];
  }
  const [first, last] = [chosen[0]!, chosen[chosen.length - 1]!];
  const room = direction > 0 ? channels - 1 - last : first;
  const step = Math.min(last - first + 1, room);
  return chosen.map((channel) => channel + direction * step);
}
