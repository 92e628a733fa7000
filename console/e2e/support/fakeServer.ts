import type { Page, WebSocketRoute } from "playwright-core";

/** The answer to a query; undefined leaves it unanswered. */
export type Answers = (query: Query, route: string) => string | undefined | Promise<string>;

export interface Query {
  cmd?: string;
  path?: string;
  args?: { cmd?: string }[];
}

/**
 * Answers the page in the server's place. To be called before the page is opened. `hear` gets each query as it comes,
 * which may be long before its turn.
 */
export async function fakeServer(
  page: Page,
  answers: Answers,
  hear: (query: Query) => void = () => undefined,
): Promise<void> {
  await page.routeWebSocket(/\/socket\//, (socket) => answerInOrder(socket, answers, hear));
}

function answerInOrder(socket: WebSocketRoute, answers: Answers, hear: (query: Query) => void): void {
  const route = decodeURIComponent(new URL(socket.url()).pathname.replace(/^.*\/socket\//, ""));
  let turn = Promise.resolve();
  socket.onMessage((text) => {
    const query = JSON.parse(String(text)) as Query;
    hear(query);
    turn = turn.then(async () => {
      const answer = await answers(query, route);
      if (answer !== undefined) {
        socket.send(answer);
      }
    });
  });
}

interface FakeBlock {
  type: string;
  name: string;
  from?: string;
  shape?: object;
  /** What its queue refused, and what waits in it. */
  queue?: () => { dropped: number; waiting: number };
}

/** What the server says of a chain in which `received` records went everywhere. */
export function chainAnswers(blocks: FakeBlock[], received: () => number): Answers {
  const path = ({ name }: FakeBlock): string => `processing/0/filter_chain/fake/chain/${name}`;
  return ({ cmd }) => {
    switch (cmd) {
      case "get_blocks":
        return JSON.stringify({
          blocks: blocks.map((block) => ({
            type: block.type,
            name: block.name,
            path: path(block),
            links: block.from === undefined ? [] : [{ from: block.from, pin: 0 }],
            outputs: 1,
            shape: block.shape ?? {},
          })),
        });
      case "get_run_info":
        return "[]";
      case "get_ledger":
        return JSON.stringify({
          ledger: { balanced: true, blocks: blocks.map((block) => entryOf(block, path(block), received())) },
        });
      default:
        return "";
    }
  };
}

function entryOf(block: FakeBlock, path: string, received: number): object {
  return {
    name: block.name,
    type: block.type,
    path,
    received,
    waiting: 0,
    became: block.type === "source" ? { decoded: received } : { counted: received },
    missing: 0,
    in_hand: 0,
    made: block.type === "source" ? received : 0,
    inputs: block.from === undefined ? [] : [{ from: block.from, pin: 0, taken: received }],
    outputs:
      block.type === "source"
        ? [{ pushed: received, taken: received, dropped: 0, waiting: 0, ...block.queue?.() }]
        : [],
  };
}
