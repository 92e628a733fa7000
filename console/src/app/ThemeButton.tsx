import { signal } from "@preact/signals";
import { load, save } from "./storage";

type Theme = "auto" | "light" | "dark";
const order: readonly Theme[] = ["auto", "light", "dark"];
const names: Record<Theme, string> = { auto: "as the system", light: "light", dark: "dark" };

const stored = load("theme");
const theme = signal<Theme>(order.find((known) => known === stored) ?? "auto");
const system = window.matchMedia("(prefers-color-scheme: dark)");

/** Whether the page is dark now; what draws on a canvas depends on it. */
export const isDark = signal(false);

function apply(): void {
  isDark.value = theme.value === "dark" || (theme.value === "auto" && system.matches);
  document.documentElement.dataset["theme"] = isDark.value ? "dark" : "light";
}
system.addEventListener("change", apply);
apply();

export function ThemeButton(): preact.JSX.Element {
  const next = order[(order.indexOf(theme.value) + 1) % order.length]!;
  const change = (): void => {
    theme.value = next;
    save("theme", next);
    apply();
  };
  return (
    <button
      type="button"
      class="quiet"
      onClick={change}
      aria-label={`Colours: ${names[theme.value]}`}
      title={`Colours: ${names[theme.value]}; press for ${names[next]}`}
    >
      {isDark.value ? "☾" : "☀"}
    </button>
  );
}
