import type { BoardValue } from "../../server/tolerantValues";

export interface Column {
  name: string;
  isReadOnly: boolean;
  values: readonly string[];
}

/** A board's values as they stand on the page. */
export interface BoardTable {
  /** Parameters with a value for each channel. */
  columns: Column[];
  channels: number;
  /** Those with one value. */
  boardWide: { name: string; isReadOnly: boolean; value: string }[];
  /** Values that don't fit on a page. */
  hidden: number;
}

/** More than a page can show. */
const mostCells = 20_000;

export function tableOf(values: readonly BoardValue[], readOnly: ReadonlySet<string>): BoardTable {
  const lists = values.filter((value) => value.isArray);
  const singles = values.filter((value) => !value.isArray);
  const shownLists = lists.slice(0, mostCells);
  const room = Math.floor(mostCells / Math.max(1, shownLists.length));
  const channels = Math.min(longest(lists), room);
  const shown = shownLists.reduce((sum, { values: texts }) => sum + Math.min(texts.length, channels), 0);
  const total = lists.reduce((sum, { values: texts }) => sum + texts.length, 0);
  return {
    columns: shownLists.map((list) => {
      return { name: list.name, isReadOnly: readOnly.has(list.name), values: list.values };
    }),
    channels,
    boardWide: singles.slice(0, mostCells).map(({ name, values: [value = ""] }) => {
      return { name, isReadOnly: readOnly.has(name), value };
    }),
    hidden: total - shown + Math.max(0, singles.length - mostCells),
  };
}

function longest(lists: readonly BoardValue[]): number {
  return lists.reduce((most, { values }) => Math.max(most, values.length), 0);
}
