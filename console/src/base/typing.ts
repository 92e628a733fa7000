/** Whether keys belong to something else than the view: a text field, a list, a question that is open. */
export function isTyping(event: KeyboardEvent): boolean {
  if (event.ctrlKey || event.metaKey || event.altKey || document.querySelector("dialog[open]") !== null) {
    return true;
  }
  const target = event.target;
  if (target instanceof HTMLInputElement) {
    return !/^(checkbox|radio|button|range)$/.test(target.type);
  }
  return target instanceof HTMLElement && (target.isContentEditable || /^(SELECT|TEXTAREA)$/.test(target.tagName));
}

/** The key by its name, whatever Shift or Caps Lock makes of a letter. */
export function plainKey({ key }: Pick<KeyboardEvent, "key">): string {
  return key.length === 1 ? key.toLowerCase() : key;
}
