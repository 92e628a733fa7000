import "./scope.css";
import { useMemo } from "preact/hooks";
import { isDark } from "../../base/theme";
import { type Block, keyOf as blockKey } from "../../model/blocks";
import { BlockChooser, chosenBlock, NoBlock } from "../common/BlockChooser";
import { useKept } from "../common/useKept";
import { ChannelPanel } from "./ChannelPanel";
import type { Picture } from "./draw";
import { ScopePicture } from "./ScopePicture";
import { ScopeStatus } from "./ScopeStatus";
import { keyHelp, onScopeKey } from "./scopeKeys";
import { TimePanel } from "./TimePanel";
import { keyOf } from "./traces";
import { TracePanel } from "./TracePanel";
import { TriggerPanel } from "./TriggerPanel";
import { useCursor } from "./useCursor";
import { type Scope, useScope } from "./useScope";

export function ScopeView(): preact.JSX.Element {
  const block = chosenBlock("oscilloscope");
  if (block === null) {
    return <NoBlock type="oscilloscope" example='behind a source with the "data_type" "waveform"' />;
  }
  return <ScopeOf key={blockKey(block)} block={block} />;
}

function ScopeOf({ block }: { block: Block }): preact.JSX.Element {
  const scope = useScope(block);
  const shown = (scope.capture.shown ?? []).filter((trace) => scope.channels.includes(trace.channel));
  const cursor = useCursor(shown[0]?.samples.length ?? 0, scope.view);
  const [selectedText, select] = useKept("sel");
  const keys = shown.filter((trace) => !trace.isDigital).map(keyOf);
  const selected = keys.find((key) => key === selectedText) ?? keys[0] ?? "";
  const picture = usePicture(scope, shown, cursor.at, cursor.mark, selected);
  return (
    <div class="split">
      <section class="panel stack scope-screen">
        <ScopeStatus scope={scope} />
        <div class="grow">
          <ScopePicture
            picture={picture}
            onView={scope.setView}
            onCursor={cursor.set}
            onKey={(event) => onScopeKey(event, { scope, cursor, selected })}
            description={`Traces of channels ${scope.channels.join(", ")} of ${block.name}. ${keyHelp}`}
          />
        </div>
        <p class="faint">{keyHelp}</p>
      </section>
      <aside class="stack scope-side">
        <div class="panel row">
          <BlockChooser chosen={block} forget={["ch", "trig", "v", "x", "sel"]} />
        </div>
        <ChannelPanel scope={scope} />
        <TracePanel scope={scope} shown={shown} cursor={cursor.at} selected={selected} onSelect={select} />
        <TimePanel scope={scope} cursor={cursor} />
        <TriggerPanel scope={scope} shown={shown} />
      </aside>
    </div>
  );
}

function usePicture(
  scope: Scope,
  shown: Picture["analog"],
  cursor: number | null,
  mark: number | null,
  selected: string,
): Picture {
  const { capture, settings, view, isStacked, nsPerSample } = scope;
  const dark = isDark.value;
  return useMemo(
    () => ({
      analog: shown.filter((trace) => !trace.isDigital),
      digital: shown.filter((trace) => trace.isDigital),
      verticalOf: scope.verticalOf,
      colourOf: scope.colourOf,
      view,
      cursor,
      mark,
      crossing: capture.crossing,
      selected,
      isStacked,
      nsPerSample,
      isDark: dark,
    }),
    [capture, scope.channels, settings, view, cursor, mark, selected, isStacked, nsPerSample, dark],
  );
}
