import { useEffect, useRef } from "preact/hooks";

export interface ConfirmProps {
  title: string;
  /** What will happen. */
  text: string;
  /** The word on the button that does it. */
  action: string;
  onConfirm: () => void;
  onCancel: () => void;
}

/** Asks before something that can't be undone; Cancel has the focus. */
export function Confirm(props: ConfirmProps): preact.JSX.Element {
  const dialog = useRef<HTMLDialogElement>(null);
  useEffect(() => dialog.current?.showModal(), []);
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
