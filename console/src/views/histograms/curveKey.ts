/** What a channel's curve is known by: the block's path and the channel. */
export function curveKey(path: string, channel: number): string {
  return `${path}@${channel}`;
}

export function blockPathOf(curve: string): string {
  return curve.slice(0, curve.lastIndexOf("@"));
}

export function channelOf(curve: string): string {
  return curve.slice(curve.lastIndexOf("@") + 1);
}
