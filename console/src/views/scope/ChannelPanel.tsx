import { sizeOf } from "../../model/blocks";
import { toggled } from "../../analysis/channels";
import type { Scope } from "./useScope";

/** Which channels are shown. */
export function ChannelPanel(props: { scope: Scope }): preact.JSX.Element {
  const { scope } = props;
  const all = Array.from({ length: scope.shape.channels }, (_, channel) => channel);
  return (
    <fieldset class="panel">
      <legend>Channels</legend>
      <div class="scope-channels">
        {all.map((channel) => (
          <label key={channel}>
            <input
              type="checkbox"
              checked={scope.channels.includes(channel)}
              onChange={() => scope.setChannels(toggled(scope.channels, channel))}
              data-test={`scope-channel-${channel}`}
            />
            {channel}
          </label>
        ))}
      </div>
      <div class="row">
        <button type="button" onClick={() => scope.setChannels(all)}>
          All
        </button>
        <button type="button" onClick={() => scope.setChannels([])}>
          None
        </button>
      </div>
      <p class="faint">
        The server has one choice of channels for all clients: this page sends its own with every reading, and so
        switches those of clients that choose only once.
      </p>
      {sizeOf(scope.block, "channels") === 0 && (
        <p class="warn">The server doesn't tell how many channels there are: set "ch_number" of the block.</p>
      )}
      {scope.shape.analog > 1 && (
        <p class="warn">
          Traces may be those of other channels, as the server keeps one analog trace per channel: set "ch_analog"
          of the block to 1.
        </p>
      )}
    </fieldset>
  );
}
