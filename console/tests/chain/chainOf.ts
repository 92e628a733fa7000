import type { Block } from "../../src/model/blocks";
import type { Entry } from "../../src/model/ledger";

/** A block by its type and name; links as "from:pin", or "" for none. */
export function block(type: string, name: string, links: string[] = [], board = ""): Block {
  return {
    type,
    name,
    path: `chain/${name}`,
    links: links.map((text) => {
      const [from = "", pin = "-1"] = text.split(":");
      return { from, pin: Number(pin) };
    }),
    outputs: 1,
    shape: board === "" ? {} : { board },
  };
}

/** An account with nothing in it but what is given. */
export function entry(name: string, values: Partial<Entry> = {}): Entry {
  return {
    name,
    type: "spectrum",
    path: `chain/${name}`,
    received: 0,
    waiting: 0,
    became: new Map(),
    missing: 0,
    inHand: 0,
    made: 0,
    inputs: [],
    outputs: [],
    ...values,
  };
}
