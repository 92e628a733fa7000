import { chooseTheme, isDark, type Theme, theme, themeAfter } from "../base/theme";

const names: Record<Theme, string> = { auto: "as the system", light: "light", dark: "dark" };

export function ThemeButton(): preact.JSX.Element {
  const next = themeAfter(theme.value);
  return (
    <button
      type="button"
      class="quiet"
      onClick={() => chooseTheme(next)}
      aria-label={`Colours: ${names[theme.value]}`}
      title={`Colours: ${names[theme.value]}; press for ${names[next]}`}
    >
      {isDark.value ? "☾" : "☀"}
    </button>
  );
}
