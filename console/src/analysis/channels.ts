/** Channels that are asked for at once at most. */
const mostNamed = 64;

/** The channels of a text like "0-3, 7" below `channels`, ascending; null when it is none. */
export function parseChannels(text: string, channels: number): number[] | null {
  const found = new Set<number>();
  const parts = text.replace(/\s*[-–]\s*/g, "-").split(/[,;\s]+/);
  for (const part of parts.filter((piece) => piece !== "")) {
    const match = /^(\d{1,9})(?:-(\d{1,9}))?$/.exec(part);
    if (match === null) {
      return null;
    }
    const from = Number(match[1]);
    const to = Number(match[2] ?? match[1]);
    if (to < from || from >= channels) {
      return null;
    }
    for (let channel = from; channel <= Math.min(to, channels - 1) && found.size < mostNamed; ++channel) {
      found.add(channel);
    }
  }
  return [...found].sort((a, b) => a - b);
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
