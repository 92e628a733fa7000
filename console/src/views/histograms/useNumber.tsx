import { useEffect, useState } from "preact/hooks";

/** A field for a number, whole or with a point or comma; `value` is what the text says, NaN while it says none. */
export interface NumberField {
  value: number;
  isEmpty: boolean;
  field: preact.JSX.Element;
  set: (value: number | null) => void;
}

/** `initial` is put in again whenever it changes. */
export function useNumber(label: string, initial: number | null, test?: string): NumberField {
  const shown = initial === null ? "" : String(initial);
  const [text, setText] = useState(shown);
  useEffect(() => setText(shown), [shown]);
  const field = (
    <label class="number">
      {label}{" "}
      <input
        type="text"
        inputMode="decimal"
        size={8}
        value={text}
        data-test={test}
        onInput={(event) => setText(event.currentTarget.value)}
      />
    </label>
  );
  const set = (value: number | null): void => setText(value === null ? "" : String(value));
  return { value: numberOf(text), isEmpty: text.trim() === "", field, set };
}

export function numberOf(text: string): number {
  const trimmed = text.trim().replace(",", ".").replace("−", "-");
  return trimmed === "" ? NaN : Number(trimmed);
}
