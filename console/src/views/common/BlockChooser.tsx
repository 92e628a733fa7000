import { parameter, setParameter } from "../../app/route";
import { blocks } from "../../app/state";
import { type Block, keyOf, ofType } from "../../model/blocks";

/** The block of a type that the operator chose, or else the first; null while there is none. */
export function chosenBlock(type: string): Block | null {
  const known = ofType(blocks.value.value ?? [], type);
  return known.find((block) => keyOf(block) === parameter("block")) ?? known[0] ?? null;
}

export interface BlockChooserProps {
  chosen: Block;
  /** Another block has other cells, channels or samples: what was chosen of these is forgotten. */
  forget?: readonly string[];
}

/** Chooses among the blocks of the chosen one's type. */
export function BlockChooser({ chosen, forget = [] }: BlockChooserProps): preact.JSX.Element {
  const known = ofType(blocks.value.value ?? [], chosen.type);
  const isUnique = (name: string): boolean => known.filter((block) => block.name === name).length === 1;
  const choose = (key: string): void => {
    forget.forEach((name) => setParameter(name, null));
    setParameter("block", key);
  };
  return (
    <>
      <label class="row">
        Block
        <select
          value={keyOf(chosen)}
          title={chosen.path}
          onChange={(event) => choose(event.currentTarget.value)}
          data-test="block"
        >
          {known.map((block) => (
            <option value={keyOf(block)}>{isUnique(block.name) ? block.name : block.path}</option>
          ))}
        </select>
      </label>
      <BlockGone asked={parameter("block")} shown={keyOf(chosen)} />
    </>
  );
}

interface BlockGoneProps {
  asked: string | null;
  shown: string | null;
  instead?: string;
}

/** Says that a block isn't shown that the address asks for. */
export function BlockGone(props: BlockGoneProps): preact.JSX.Element | null {
  const { asked, shown, instead = "Shown is another." } = props;
  return asked === null || asked === shown ? null : (
    <span class="alarm" role="alert" data-test="block-gone">
      {`The server has no ${asked}. ${instead}`}
    </span>
  );
}

/** Stands in the place of a view that has no block to show. `example` says how the block is configured. */
export function NoBlock(props: { type: string; example: string }): preact.JSX.Element {
  const { value, fault } = blocks.value;
  const unknown = fault === null ? "Waiting for the list of blocks …" : `The blocks aren't known. ${fault}`;
  const none = `The configuration has no block of type "${props.type}".`;
  const remedy = `Add one to a filter chain, ${props.example}, and start the server anew.`;
  return (
    <p class="panel" data-test="no-block">
      {value === null ? unknown : `${none} ${remedy}`}
    </p>
  );
}
