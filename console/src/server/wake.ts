// What has all who wait ask at once: the page is looked at again, or a connection that was lost is back.

const sleepers = new Set<() => void>();

/** Those that came first are woken first. Returns what ends it. */
export function onWake(listener: () => void): () => void {
  sleepers.add(listener);
  return () => void sleepers.delete(listener);
}

export function wake(): void {
  [...sleepers].forEach((listener) => listener());
}

globalThis.document?.addEventListener("visibilitychange", () => {
  if (!document.hidden) {
    wake();
  }
});
