import type { Judgement } from "./judgement";
import type { RateRow } from "./rateRows";

/** What is said of all channels; `tone` is the class of the line. */
export interface Verdict {
  text: string;
  tone: "alarm" | "warn" | "good" | "faint";
}

const kinds: readonly Judgement[] = ["dead", "blocked", "noisy"];
const mostNames = 8;

/** `isNow` where the rates are those of now: what isn't kept up is never said to be well. */
export function verdictOf(rows: readonly RateRow[], isNow: boolean): Verdict {
  const said = kinds.flatMap((kind) => {
    const found = rows.filter((row) => row.judgement === kind).map((row) => row.name);
    const more = found.length > mostNames ? ", …" : "";
    return found.length === 0 ? [] : [`${found.length} ${kind}: ${found.slice(0, mostNames).join(", ")}${more}`];
  });
  const nothing = rows.every((row) => !(row.in > 0));
  const isBad = nothing || said.length > 0;
  const text = nothing ? "No channel counts." : isBad ? said.join("; ") : "No dead, blocked or noisy channel.";
  return isNow
    ? { text, tone: isBad ? "alarm" : "good" }
    : { text: `By the last rates: ${text}`, tone: isBad ? "warn" : "faint" };
}
