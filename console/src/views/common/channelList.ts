/** Channels as the address has them: "0,3,8-11". Anything else in it, and what is beyond `count`, is left out. */
export function parseChannels(text: string, count: number): number[] {
  const channels = new Set<number>();
  for (const part of text.split(",")) {
    const range = /^(\d{1,9})(?:-(\d{1,9}))?$/.exec(part.trim());
    if (range !== null) {
      const first = Number(range[1]);
      const last = Math.min(Number(range[2] ?? first), count - 1);
      for (let channel = first; channel <= last; ++channel) {
        channels.add(channel);
      }
    }
  }
  return [...channels].sort((a, b) => a - b);
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
