import { useEffect, useRef } from "preact/hooks";
import { holdFocus } from "./holdFocus";

export interface ConfirmProps {
  title: string;
  /** What will happen. */
  text: string;
  /** The word on the button that does it. */
  action: string;
  onConfirm: () => void;
  onCancel: () => void;
}

/** Asks before something that can't be undone; Cancel has the focus, and gives it back to what had it before. */
export function Confirm(props: ConfirmProps): preact.JSX.Element {
  const dialog = useRef<HTMLDialogElement>(null);
  useEffect(() => {
    const shown = dialog.current!;
    const before = document.activeElement;
    shown.showModal();
    return () => {
      shown.close(); // gives the focus back, which the end of a dialog that is open wouldn't
      if (before instanceof HTMLElement) {
        holdFocus(before);
      }
    };
  }, []);
  return (
    <dialog ref={dialog} onCancel={props.onCancel} data-test="confirm">
      <h2>{props.title}</h2>
      <p>{props.text}</p>
      <form method="dialog" class="row confirm">
        <button type="button" autofocus onClick={props.onCancel}>
          Cancel
        </button>
        <button type="button" class="danger" onClick={props.onConfirm} data-test="confirm-action">
          {props.action}
        </button>
      </form>
    </dialog>
  );
}
