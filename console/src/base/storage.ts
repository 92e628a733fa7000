// What the browser keeps for this page; where it keeps nothing, or has no room, the page works all the same.

/** Null when there is none. */
export function load(key: string): string | null {
  try {
    return localStorage.getItem(key);
  } catch {
    return null;
  }
}

/** Null forgets it. */
export function save(key: string, value: string | null): void {
  try {
    if (value === null) {
      localStorage.removeItem(key);
    } else {
      localStorage.setItem(key, value);
    }
  } catch {
    // It holds as long as the page does.
  }
}
