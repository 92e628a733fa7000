import type { Order } from "./rateRows";

/** What the operator chose of the rates. */
export interface RateOptions {
  /** Rates are taken over so long; null is since the start. */
  seconds: number | null;
  order: Order;
  isLog: boolean;
  /** A unit of the timestamps, as entered; null is reckoned. */
  tickNs: number | null;
}

export const spans: readonly number[] = [2, 10, 60];
const defaultSeconds = 10;

export function optionsOf(parameter: (name: string) => string | null): RateOptions {
  const over = parameter("over");
  const tickNs = Number(parameter("tick") ?? NaN);
  return {
    seconds: over === "start" ? null : (spans.find((span) => String(span) === over) ?? defaultSeconds),
    order: parameter("sort") === "rate" ? "rate" : "channel",
    isLog: parameter("log") === "1",
    tickNs: tickNs > 0 && tickNs <= 1e9 ? tickNs : null,
  };
}
