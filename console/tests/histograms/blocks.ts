import type { Block } from "../../src/model/blocks";
import type { Answerer } from "../../src/server/Server";

export function block(name: string, channels: number, bins: number, shape: Block["shape"] = {}): Block {
  const path = `chain/${name}`;
  return { type: "spectrum", name, path, links: [], outputs: 0, shape: { channels, bins, ...shape } };
}

/** Answers queries by their path, and remembers the channels that were asked for. */
export class Answers implements Answerer {
  readonly asked: unknown[] = [];
  constructor(private readonly byPath: Record<string, number[][] | string>) {}

  ask(_route: string, query: object): Promise<string> {
    const { path, args } = query as { path: string; args: { channels: number[] }[] };
    this.asked.push(args[0]!.channels);
    const answer = this.byPath[path] ?? "";
    return Promise.resolve(typeof answer === "string" ? answer : JSON.stringify(answer.map((data) => ({ data }))));
  }
}
