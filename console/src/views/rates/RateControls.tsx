import { setParameter } from "../../app/route";
import type { Block } from "../../model/blocks";
import { BlockChooser } from "../common/BlockChooser";
import { NumberInput } from "../common/NumberInput";
import { type RateOptions, spans } from "./options";

export interface RateControlsProps {
  chosen: Block;
  options: RateOptions;
  /** Seconds of one unit of the timestamps; null when it isn't known. */
  tick: number | null;
}

export function RateControls(props: RateControlsProps): preact.JSX.Element {
  const { chosen, options, tick } = props;
  const keep = (name: string) => (event: preact.TargetedEvent<HTMLSelectElement>) =>
    setParameter(name, event.currentTarget.value);
  return (
    <div class="row">
      <BlockChooser chosen={chosen} forget={["ch", "span"]} />
      <label>
        Rate over{" "}
        <select value={String(options.seconds ?? "start")} onChange={keep("over")} data-test="rates-over">
          {spans.map((span) => <option value={String(span)}>{`the last ${span} s`}</option>)}
          <option value="start">the time since the start</option>
        </select>
      </label>
      <label>
        Order by{" "}
        <select value={options.order} onChange={keep("sort")} data-test="rates-sort">
          <option value="channel">channel</option>
          <option value="rate">rate</option>
        </select>
      </label>
      <label>
        <input
          type="checkbox"
          checked={options.isLog}
          data-test="rates-log"
          onChange={(event) => setParameter("log", event.currentTarget.checked ? "1" : null)}
        />{" "}
        log scale
      </label>
      <TickInput options={options} tick={tick} />
    </div>
  );
}

function TickInput(props: { options: RateOptions; tick: number | null }): preact.JSX.Element {
  const { options, tick } = props;
  const placeholder = tick === null ? "not known yet" : (tick * 1e9).toPrecision(3);
  return (
    <label title="The board alone knows the unit of its timestamps; empty, it is reckoned from counts and rates.">
      Timestamp unit / ns{" "}
      <NumberInput
        class="tick"
        min="0"
        placeholder={placeholder}
        value={options.tickNs ?? ""}
        onEnter={(text) => setParameter("tick", text || null)}
      />
    </label>
  );
}
