import type { Board } from "./boards";

/** What the operator is about to switch. */
export interface Order {
  on: boolean;
  boards: readonly Board[];
  /** By run control, which reaches every block; else by the board's own. */
  isForAll: boolean;
}

export function titleOf(order: Order): string {
  const what = order.isForAll && order.boards.length > 1 ? `all ${order.boards.length} boards` : namesOf(order);
  return `Switch the high voltage of ${what} ${order.on ? "on" : "off"}?`;
}

export function consequencesOf(order: Order): string {
  const change = order.on ? "go up to their set points" : "go down to 0 V";
  const who = order.boards.length === 1 ? "the board" : "each board";
  return (
    `The channels of ${namesOf(order)} ${change}. Then ${who} is configured anew: its endpoints stop and start, ` +
    "which may interrupt the data, also of a run."
  );
}

/** What is said when it was sent, at a time of day. */
export function reportOf(order: Order, time: string): string {
  return `${callOf(order)} was sent to ${namesOf(order)} at ${time}: the values show what followed.`;
}

/** What is said when it failed: another may be under way, so it is named. */
export function failureOf(order: Order, fault: string): string {
  return `${callOf(order)} for ${namesOf(order)}: ${fault}`;
}

function callOf(order: Order): string {
  return `“${order.on ? "on" : "off"}”`;
}

function namesOf(order: Order): string {
  return order.boards.map((board) => board.name).join(", ");
}
