/**
 * Has an element get the focus back whenever it can be pressed again: a browser takes it away from one that can't.
 * Until the operator goes elsewhere.
 */
export function holdFocus(element: HTMLElement): void {
  const watching = new MutationObserver(() => {
    if (!element.matches(":disabled")) {
      element.focus({ preventScroll: true });
    }
  });
  const over = new AbortController();
  const end = (event: Event): void => {
    if (event.target !== element) {
      over.abort();
      watching.disconnect();
    }
  };
  watching.observe(element, { attributeFilter: ["disabled"] });
  document.addEventListener("focusin", end, { signal: over.signal });
  document.addEventListener("pointerdown", end, { signal: over.signal });
}
