import type { ComponentChildren } from "preact";

interface Props {
  /** What tests find it by. */
  name: string;
  title?: string;
  /** Of those that stay pressed. */
  isPressed?: boolean;
  isDisabled?: boolean;
  onPress: () => void;
  children: ComponentChildren;
}

export function Tool(props: Props): preact.JSX.Element {
  const { name, title, isPressed, isDisabled = false, onPress } = props;
  return (
    <button
      type="button"
      data-test={name}
      title={title}
      aria-pressed={isPressed}
      disabled={isDisabled}
      onClick={onPress}
    >
      {props.children}
    </button>
  );
}
