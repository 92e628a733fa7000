import { useState } from "preact/hooks";

export interface NumberInputProps extends Omit<preact.JSX.HTMLAttributes<HTMLInputElement>, "onChange"> {
  value: number | string;
  /** Gets the text when it is entered: "" is none. */
  onEnter: (text: string) => void;
  class?: string;
  min?: string;
  placeholder?: string;
  disabled?: boolean;
}

/** A field for a number that keeps what is being typed, however often the view around it is drawn anew. */
export function NumberInput({ value, onEnter, ...more }: NumberInputProps): preact.JSX.Element {
  const [draft, setDraft] = useState<string | null>(null);
  const enter = (event: preact.TargetedEvent<HTMLInputElement>): void => {
    setDraft(null);
    onEnter(event.currentTarget.value);
  };
  return (
    <input
      type="number"
      step="any"
      value={draft ?? value}
      onInput={(event) => setDraft(event.currentTarget.value)}
      onChange={enter}
      onBlur={() => setDraft(null)}
      {...more}
    />
  );
}
