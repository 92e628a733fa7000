import { useEffect, useRef } from "preact/hooks";
import { isTyping, plainKey } from "../../base/typing";

/** Keys of a view, wherever the focus is but in a field. */
export function useKeys(actions: Record<string, () => void>): void {
  const latest = useRef(actions);
  latest.current = actions;
  useEffect(() => {
    const onKey = (event: KeyboardEvent): void => {
      const action = latest.current[plainKey(event)];
      if (action !== undefined && !isTyping(event)) {
        action();
        event.preventDefault();
      }
    };
    window.addEventListener("keydown", onKey);
    return () => window.removeEventListener("keydown", onKey);
  }, []);
}
