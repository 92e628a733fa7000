import { computed, signal } from "@preact/signals";

// Where the operator is, kept in the address: a view can be bookmarked, and back and forward work.

const hash = signal(window.location.hash);
window.addEventListener("hashchange", () => (hash.value = window.location.hash));

export const views = [
  ["overview", "Overview"],
  ["spectra", "Spectra"],
  ["times", "Times"],
  ["position", "Position"],
  ["image", "Image"],
  ["scope", "Oscilloscope"],
  ["rates", "Rates"],
  ["hv", "High voltage"],
  ["chain", "Chain"],
] as const;
export type View = (typeof views)[number][0];

const place = computed(() => {
  const [name = "", query = ""] = hash.value.replace(/^#\/?/, "").split("?", 2);
  const view: View = views.find(([known]) => known === name)?.[0] ?? "overview";
  return { view, query: new URLSearchParams(query) };
});

export const view = computed(() => place.value.view);

/** What a view keeps in the address. */
export function parameter(name: string): string | null {
  return place.value.query.get(name);
}

/** Changes it without a new entry in the history; null takes it away. */
export function setParameter(name: string, value: string | null): void {
  const query = new URLSearchParams(place.value.query);
  if (value === null) {
    query.delete(name);
  } else {
    query.set(name, value);
  }
  const text = query.toString();
  history.replaceState(null, "", `#/${place.value.view}${text === "" ? "" : `?${text}`}`);
  hash.value = window.location.hash;
}

export function goTo(next: View): void {
  window.location.hash = `#/${next}`;
}
