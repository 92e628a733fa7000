import { timeOfDay } from "../../base/format";
import { setParameter } from "../../app/route";
import { BlockGone } from "../common/BlockChooser";
import { CountingControls } from "../common/CountingControls";
import { Freshness } from "../common/Freshness";
import { rebinFactors } from "./display";
import type { HistogramKind } from "./kinds";
import { Tool } from "./Tool";
import type { Curves } from "./useCurves";
import { pollIntervalMs } from "./useHistograms";

interface ToolbarProps {
  kind: HistogramKind;
  shown: Curves;
  isLog: boolean;
  factor: number;
  isMarking: boolean;
  setMarking: (isMarking: boolean) => void;
  onWhole: () => void;
}

/** What is done with all that is shown. */
export function Toolbar(props: ToolbarProps): preact.JSX.Element {
  const { kind, shown, isLog, factor, isMarking, setMarking, onWhole } = props;
  const { isFrozen, setFrozen, reading, selections } = shown;
  return (
    <div class="row toolbar">
      <CountingControls paths={selections.map(({ block }) => block.path)} hasState={kind.countingNote === ""} />
      {kind.countingNote !== "" && <span class="faint">{kind.countingNote}</span>}
      <Tool name="log" title="Key l" isPressed={isLog} onPress={() => setParameter("log", isLog ? null : "1")}>
        Log counts
      </Tool>
      <RebinChoice factor={factor} />
      <Tool name="whole" title={zoomKeys} onPress={onWhole}>Show all</Tool>
      <Tool
        name="mark"
        title="Then drag over a peak; with Shift held dragging marks at any time"
        isPressed={isMarking}
        isDisabled={shown.analysed === undefined}
        onPress={() => setMarking(!isMarking)}
      >
        Mark
      </Tool>
      <Tool name="freeze" title="Key f" isPressed={isFrozen} onPress={() => setFrozen(!isFrozen)}>
        {isFrozen ? "Go on" : "Freeze"}
      </Tool>
      <State shown={shown} />
      {shown.missing.map((name) => <BlockGone key={name} asked={name} shown={null} instead="It isn't shown." />)}
      {reading.value?.faults.map((fault) => (
        <p class="alarm" role="alert" key={fault} data-test="partial-fault">{fault}</p>
      ))}
    </div>
  );
}

const zoomKeys =
  "Key Home, on the chart; + − ← → zoom and move there, and , . move the cursor. " +
  "The wheel zooms, dragging chooses, the right button moves.";

function RebinChoice({ factor }: { factor: number }): preact.JSX.Element {
  const choose = (text: string): void => setParameter("rebin", text === "1" ? null : text);
  return (
    <label>
      Rebin{" "}
      <select value={String(factor)} data-test="rebin" onChange={(event) => choose(event.currentTarget.value)}>
        {rebinFactors.map((known) => <option key={known} value={String(known)}>{`× ${known}`}</option>)}
      </select>
    </label>
  );
}

/** Whether what is shown is what is. */
function State({ shown: { isFrozen, reading, selections } }: { shown: Curves }): preact.JSX.Element {
  if (isFrozen) {
    const text = `❄ FROZEN: what was at ${timeOfDay(reading.at)}`;
    return <p class="frozen" role="status" data-test="frozen">{text}</p>;
  }
  return selections.some(({ channels }) => channels.length > 0) ? (
    <Freshness reading={reading} intervalMs={pollIntervalMs} />
  ) : (
    <p class="warn" data-test="no-channel">No channel is chosen: tick a block or enter its channels.</p>
  );
}
