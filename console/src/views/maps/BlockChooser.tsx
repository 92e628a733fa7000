import { parameter, setParameter } from "../../app/route";
import { blocks } from "../../app/state";
import type { Size } from "../../charts/heat/heatArea";
import { type Block, ofType } from "../../model/blocks";

/** The block of a type that the operator chose, or else the first; null while there is none. */
export function chosenBlock(type: string): Block | null {
  const known = ofType(blocks.value.value ?? [], type);
  return known.find((block) => block.path === parameter("block")) ?? known[0] ?? null;
}

export function BlockChooser(props: { type: string; chosen: Block }): preact.JSX.Element {
  const known = ofType(blocks.value.value ?? [], props.type);
  const isUnique = (name: string): boolean => known.filter((block) => block.name === name).length === 1;
  const choose = (path: string): void => {
    setParameter("at", null); // another map has other cells
    setParameter("block", path);
  };
  const { path: shown } = props.chosen;
  const asked = parameter("block");
  return (
    <>
      <label class="row">
        Block
        <select
          value={shown}
          title={shown}
          onChange={(event) => choose(event.currentTarget.value)}
          data-test="block"
        >
          {known.map(({ name, path }) => (
            <option value={path}>{isUnique(name) ? name : path}</option>
          ))}
        </select>
      </label>
      {asked !== null && asked !== shown && (
        <span class="alarm" role="alert" data-test="block-gone">
          {`The server has no ${asked}. Shown is another.`}
        </span>
      )}
    </>
  );
}

/** Stands in the place of a view that has no block to show. */
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

/** Why there is no map to show; null when there is one, as far as is known. */
export function shapeFault(block: Block, columnsKey: string): string | null {
  const known = (key: string): number => (block.shape[key] === 0 ? 0 : 1);
  return emptyFault({ rows: known("rows"), columns: known("columns") }, columnsKey);
}

/** `columnsKey` is the configuration's key that makes the columns. */
export function emptyFault({ rows, columns }: Size, columnsKey: string): string | null {
  if (rows > 0 && columns > 0) {
    return null;
  }
  const [missing, key] = rows > 0 ? ["columns", columnsKey] : ["rows", "y_positions"];
  return `This map has no ${missing}: set "${key}" of the block in the server's configuration.`;
}
