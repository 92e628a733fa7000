import { zoomed } from "../../charts/curves";
import { isTyping, plainKey } from "../../base/typing";
import type { Cursor } from "./useCursor";
import type { Scope } from "./useScope";
import { neighbourStep } from "./vertical";

/** What the keys act on. */
export interface KeyTargets {
  scope: Scope;
  cursor: Cursor;
  /** The key of the selected trace. */
  selected: string;
}

const actions: Record<string, (targets: KeyTargets) => void> = {
  ArrowLeft: ({ cursor }) => cursor.move(-1),
  ArrowRight: ({ cursor }) => cursor.move(1),
  "Shift+ArrowLeft": ({ scope }) => pan(scope, -0.1),
  "Shift+ArrowRight": ({ scope }) => pan(scope, 0.1),
  PageUp: ({ scope }) => pan(scope, -0.9),
  PageDown: ({ scope }) => pan(scope, 0.9),
  "+": (targets) => zoom(targets, 0.7),
  "=": (targets) => zoom(targets, 0.7),
  "-": (targets) => zoom(targets, 1 / 0.7),
  Home: ({ scope }) => scope.setView(null),
  ArrowUp: (targets) => lift(targets, 0.5),
  ArrowDown: (targets) => lift(targets, -0.5),
  "[": (targets) => rescale(targets, false),
  "]": (targets) => rescale(targets, true),
  m: ({ cursor }) => cursor.toggleMark(),
  f: ({ scope }) => scope.fit(),
  " ": ({ scope }) => scope.setMode(scope.capture.mode === "frozen" ? "run" : "frozen"),
};

export const keyHelp =
  "← → cursor, Shift with them moves, + − Home zoom, ↑ ↓ offset and [ ] scale of the selected trace, " +
  "M marks, F fits, Space freezes";

export function onScopeKey(event: KeyboardEvent, targets: KeyTargets): void {
  const isShifted = event.shiftKey && event.key.startsWith("Arrow");
  const key = plainKey(event);
  const action = actions[isShifted ? `Shift+${key}` : key];
  if (action !== undefined && !isTyping(event)) {
    action(targets);
    event.preventDefault();
  }
}

function pan({ view: [from, to], setView }: Scope, part: number): void {
  const step = (to - from) * part;
  setView([from + step, to + step]);
}

function zoom({ scope, cursor }: KeyTargets, factor: number): void {
  const [from, to] = scope.view;
  const isSeen = cursor.at !== null && cursor.at >= from && cursor.at <= to;
  scope.setView(zoomed(scope.view, isSeen ? cursor.at! : (from + to) / 2, factor));
}

function lift({ scope, selected }: KeyTargets, divisions: number): void {
  const { offset, perDivision } = scope.verticalOf(selected);
  scope.set(selected, { offset: Number((offset - divisions * perDivision).toPrecision(9)), perDivision });
}

function rescale({ scope, selected }: KeyTargets, coarser: boolean): void {
  const { offset, perDivision } = scope.verticalOf(selected);
  scope.set(selected, { offset, perDivision: neighbourStep(perDivision, coarser) });
}
