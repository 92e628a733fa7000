import { goTo, views } from "./route";

/** Whether keys belong to what has the focus: a text field, a list. */
export function isTyping(event: KeyboardEvent): boolean {
  if (event.ctrlKey || event.metaKey || event.altKey) {
    return true;
  }
  const target = event.target;
  if (target instanceof HTMLInputElement) {
    return !/^(checkbox|radio|button|range)$/.test(target.type);
  }
  return target instanceof HTMLElement && (target.isContentEditable || /^(SELECT|TEXTAREA)$/.test(target.tagName));
}

/** The digits choose a view. */
export function onViewKey(event: KeyboardEvent): void {
  const chosen = views[Number(event.key) - 1];
  if (/^[1-9]$/.test(event.key) && chosen !== undefined && !isTyping(event)) {
    goTo(chosen[0]);
    event.preventDefault();
  }
}
