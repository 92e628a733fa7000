import { useEffect } from "preact/hooks";
import { HighVoltageView } from "../views/hv/HighVoltageView";
import { ImageView } from "../views/image/ImageView";
import { OverviewView } from "../views/overview/OverviewView";
import { PositionView } from "../views/position/PositionView";
import { RatesView } from "../views/rates/RatesView";
import { ScopeView } from "../views/scope/ScopeView";
import { SpectraView } from "../views/spectra/SpectraView";
import { TimesView } from "../views/times/TimesView";
import { BrokenRun } from "./BrokenRun";
import { Connection } from "./Connection";
import { onViewKey } from "./keys";
import { LateFaults } from "./LateFaults";
import { lazyView } from "./lazyView";
import { type View, view, views } from "./route";
import { StatusLine } from "./StatusLine";
import { ThemeButton } from "./ThemeButton";

const components: Record<View, () => preact.JSX.Element> = {
  overview: OverviewView,
  spectra: SpectraView,
  times: TimesView,
  position: PositionView,
  image: ImageView,
  scope: ScopeView,
  rates: RatesView,
  hv: HighVoltageView,
  chain: lazyView(async () => (await import("../views/chain/ChainView")).ChainView),
};

export function App(): preact.JSX.Element {
  useEffect(() => {
    window.addEventListener("keydown", onViewKey);
    return () => window.removeEventListener("keydown", onViewKey);
  }, []);
  const Shown = components[view.value];
  return (
    <>
      <header class="head">
        <nav aria-label="Views">
          {views.map(([name, text], i) => (
            <a href={`#/${name}`} aria-current={view.value === name ? "page" : undefined} title={`Key ${i + 1}`}>
              {text}
            </a>
          ))}
        </nav>
        <StatusLine />
        <ThemeButton />
      </header>
      <Connection />
      <BrokenRun />
      <LateFaults />
      <main data-view={view.value} tabIndex={-1}>
        <Shown key={view.value} />
      </main>
    </>
  );
}
