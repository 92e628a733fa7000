export interface ChoiceProps<T extends string> {
  label: string;
  chosen: T;
  options: readonly (readonly [value: T, text: string])[];
  onChoose: (value: T) => void;
  /** The key that chooses the next one. */
  shortcut?: string;
}

/** A few buttons of which one is pressed. */
export function Choice<T extends string>(props: ChoiceProps<T>): preact.JSX.Element {
  const title = props.shortcut === undefined ? undefined : `${props.label} (key ${props.shortcut})`;
  return (
    <div class="choice" role="group" aria-label={props.label} title={title}>
      {props.options.map(([value, text]) => (
        <button
          type="button"
          aria-pressed={value === props.chosen}
          onClick={() => props.onChoose(value)}
          data-test={`choose-${value}`}
        >
          {text}
        </button>
      ))}
    </div>
  );
}
