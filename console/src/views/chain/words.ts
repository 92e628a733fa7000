import type { Json, JsonObject } from "../../server/answers";

// What the server's words are called on the page.

const fates: Record<string, string> = {
  refused: "refused: numbers that can't be true",
  dropped: "dropped: too many waited",
  other: "of another kind, or no room to count",
  full_queue: "dropped at full queues",
};

export function wordsOf(fate: string): string {
  return fates[fate] ?? fate.replaceAll("_", " ");
}

const longest = 200;

function textOf(value: Json): string {
  if (Array.isArray(value)) {
    return value.map(String).join(", ");
  }
  return typeof value === "string" ? value : JSON.stringify(value);
}

/** The shape's values by name, lists in one line. */
export function shapeRows(shape: JsonObject): [string, string][] {
  return Object.entries(shape).map(([name, value]) => {
    const text = textOf(value);
    return [name.replaceAll("_", " "), text.length > longest ? `${text.slice(0, longest - 1)}…` : text];
  });
}
