import type { Size } from "../../charts/heat/heatArea";
import type { Block } from "../../model/blocks";

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
