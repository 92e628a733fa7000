import { asArray, asObject, asText, type Json, type JsonObject } from "../server/answers";
import { askCommands } from "../server/runControl";
import type { Answerer } from "../server/Server";

/** A block of the chain, as the server tells of it. */
export interface Block {
  type: string;
  name: string;
  /** What queries find it by; empty where only its name does. */
  path: string;
  links: Link[];
  outputs: number;
  shape: JsonObject;
}

/** What an input is linked to; `from` is empty when it is to nothing. */
export interface Link {
  from: string;
  pin: number;
}

export async function getBlocks(server: Answerer): Promise<Block[]> {
  const answer = await askCommands(server, "get_blocks");
  return asArray(answer["blocks"], "the blocks").map(blockOf);
}

function blockOf(entry: Json): Block {
  const values = asObject(entry, "the blocks");
  return {
    type: asText(values["type"], "the blocks"),
    name: asText(values["name"], "the blocks"),
    path: asText(values["path"], "the blocks"),
    links: asArray(values["links"], "the blocks").map(linkOf),
    outputs: Number(values["outputs"] ?? 0),
    shape: asObject(values["shape"] ?? {}, "the blocks"),
  };
}

function linkOf(entry: Json): Link {
  const values = asObject(entry, "the blocks");
  return { from: asText(values["from"], "the blocks"), pin: Number(values["pin"] ?? -1) };
}

/** What an address finds a block by. */
export function keyOf({ path, name }: Block): string {
  return path === "" ? name : path;
}

/** A whole number of the shape, or 0. */
export function sizeOf(block: Block, key: string): number {
  const value = block.shape[key];
  return typeof value === "number" && Number.isInteger(value) && value > 0 ? value : 0;
}

export function ofType(blocks: readonly Block[], ...types: string[]): Block[] {
  return blocks.filter((block) => types.includes(block.type));
}
