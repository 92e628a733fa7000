import { isTyping } from "../base/typing";
import { goTo, views } from "./route";

/** The digits choose a view. */
export function onViewKey(event: KeyboardEvent): void {
  const chosen = views[Number(event.key) - 1];
  if (/^[1-9]$/.test(event.key) && chosen !== undefined && !isTyping(event)) {
    goTo(chosen[0]);
    // What had the focus may be gone: Tab goes on at the view's beginning.
    document.querySelector("main")?.focus({ preventScroll: true });
    event.preventDefault();
  }
}
