import { useEffect, useState } from "preact/hooks";
import { server } from "../../app/state";
import { formatChannels, parseChannels, shifted } from "../../analysis/channels";
import type { Block } from "../../model/blocks";
import { getHistograms } from "../../server/queries";
import { useAction } from "../common/useAction";
import { allChannels, atMost, busiest, canAskAll, channelCount, mostCurves, type Selection } from "./selection";
import { Tool } from "./Tool";

const busiestShown = 4;
const tooMany = `${mostCurves} curves are shown already.`;

interface Props {
  blocks: readonly Block[];
  selections: readonly Selection[];
  onChange: (selections: Selection[]) => void;
}

/** Chooses blocks and channels of them. */
export function ChannelPicker({ blocks, selections, onChange }: Props): preact.JSX.Element {
  const room = (block: Block): number =>
    mostCurves - selections.reduce((sum, other) => sum + (other.block === block ? 0 : other.channels.length), 0);
  const choose = (block: Block, channels: number[] | null): void => {
    const others = selections.filter((selection) => selection.block !== block);
    const kept = channels === null ? others : [...others, ...atMost([{ block, channels }], room(block))];
    onChange(blocks.flatMap((known) => kept.filter((selection) => selection.block === known)));
  };
  return (
    <fieldset class="picker">
      <legend>Channels</legend>
      {blocks.map((block) => (
        <BlockRow
          key={block.path}
          block={block}
          channels={selections.find((selection) => selection.block === block)?.channels ?? null}
          room={room(block)}
          onChoose={(channels) => choose(block, channels)}
        />
      ))}
      <StepButtons selections={selections} onChange={onChange} />
    </fieldset>
  );
}

export function stepped(selections: readonly Selection[], direction: 1 | -1): Selection[] {
  return selections.map(({ block, channels }) => ({
    block,
    channels: shifted(channels, direction, channelCount(block)),
  }));
}

function StepButtons({ selections, onChange }: Omit<Props, "blocks">): preact.JSX.Element {
  return (
    <div class="row">
      <Tool name="previous" title="Key p" onPress={() => onChange(stepped(selections, -1))}>◀ Previous</Tool>
      <Tool name="next" title="Key n" onPress={() => onChange(stepped(selections, 1))}>Next ▶</Tool>
    </div>
  );
}

interface RowProps {
  block: Block;
  channels: number[] | null;
  /** So many curves fit in yet. */
  room: number;
  onChoose: (channels: number[] | null) => void;
}

function BlockRow(props: RowProps): preact.JSX.Element {
  const { block, channels, room, onChoose } = props;
  return (
    <div class="row block">
      <label title={block.path}>
        <input
          type="checkbox"
          checked={channels !== null}
          disabled={channels === null && room < 1}
          onChange={(event) => onChoose(event.currentTarget.checked ? [0] : null)}
        />
        {block.name}
      </label>
      {channels !== null && <ChannelField {...props} channels={channels} />}
      {channels !== null && canAskAll(block) && <BusiestButton {...props} />}
      {channels === null && room < 1 && <span class="faint">{tooMany}</span>}
    </div>
  );
}

function BusiestButton({ block, room, onChoose }: RowProps): preact.JSX.Element {
  const action = useAction();
  const find = async (): Promise<void> => {
    const all = await getHistograms(server, block.path, allChannels(block));
    const found = busiest(all, Math.min(busiestShown, room));
    if (found.length === 0) {
      throw new Error(room < 1 ? tooMany : `${block.name} has counted nothing yet: press Start.`);
    }
    onChoose(found);
  };
  return (
    <>
      <Tool
        name="busiest"
        title="Shows the channels with the most counts"
        isDisabled={action.isRunning}
        onPress={() => action.run(find)}
      >
        Busiest
      </Tool>
      {action.fault !== null && <p class="alarm" role="alert">{action.fault}</p>}
    </>
  );
}

function ChannelField({ block, channels, room, onChoose }: RowProps & { channels: number[] }): preact.JSX.Element {
  const shown = formatChannels(channels).replace(/,/g, ", ");
  const [text, setText] = useState(shown);
  const [fault, setFault] = useState<string | null>(null);
  useEffect(() => {
    setText(shown);
  }, [shown]);
  const take = (): void => {
    const chosen = parseChannels(text, channelCount(block));
    setFault(chosen === null ? notUnderstood(text, block) : chosen.length > room ? cutTo(room) : null);
    if (chosen !== null) {
      onChoose(chosen);
    }
  };
  return (
    <>
      <input
        type="text"
        inputMode="text"
        class="channels"
        aria-label={`Channels of ${block.name}`}
        aria-invalid={fault !== null}
        data-test="channels"
        value={text}
        onInput={(event) => setText(event.currentTarget.value)}
        onChange={take}
        onKeyDown={(event) => event.key === "Enter" && take()}
      />
      {fault !== null && <p class="alarm" role="alert">{fault}</p>}
    </>
  );
}

function notUnderstood(text: string, block: Block): string {
  const last = channelCount(block) - 1;
  return `“${text}” isn't understood: ${block.name} has the channels 0 to ${last}, write them like 0-3, 7.`;
}

function cutTo(room: number): string {
  return `${mostCurves} curves are shown at most: the first ${room} of these are.`;
}
