import { signal } from "@preact/signals";
import { load, save } from "./storage";

export type Theme = "auto" | "light" | "dark";
const themes: readonly Theme[] = ["auto", "light", "dark"];

const stored = load("theme");
export const theme = signal<Theme>(themes.find((known) => known === stored) ?? "auto");
const system = window.matchMedia("(prefers-color-scheme: dark)");

/** Whether the page is dark now; what draws on a canvas depends on it. */
export const isDark = signal(false);

function apply(): void {
  isDark.value = theme.value === "dark" || (theme.value === "auto" && system.matches);
  document.documentElement.dataset["theme"] = isDark.value ? "dark" : "light";
}
system.addEventListener("change", apply);
apply();

export function themeAfter(known: Theme): Theme {
  return themes[(themes.indexOf(known) + 1) % themes.length]!;
}

export function chooseTheme(chosen: Theme): void {
  theme.value = chosen;
  save("theme", chosen);
  apply();
}
