import "./overview.css";
import { AccountPanel } from "./AccountPanel";
import { LiveSpectrum } from "./LiveSpectrum";
import { RunPanel } from "./RunPanel";
import { SourcesPanel } from "./SourcesPanel";
import { VoltagePanel } from "./VoltagePanel";

export function OverviewView(): preact.JSX.Element {
  return (
    <div class="overview">
      <div class="stack">
        <LiveSpectrum />
        <SourcesPanel />
      </div>
      <div class="stack">
        <RunPanel />
        <VoltagePanel />
        <AccountPanel />
      </div>
    </div>
  );
}
