import type { Browser, Page } from "playwright-core";

export interface LedgerEntry {
  name: string;
  path: string;
  type: string;
  received: number;
  waiting: number;
  became: Record<string, number>;
  missing: number;
  made: number;
  outputs: { dropped: number }[];
}

/** Asks the server itself, past the web server and the console's own code. */
export class Client {
  private hasStoppedBoards = false;

  private constructor(private readonly page: Page) {}

  static async open(browser: Browser): Promise<Client> {
    return new Client(await browser.newPage());
  }

  /** Leaves the boards running. */
  async close(): Promise<void> {
    if (this.hasStoppedBoards) {
      await this.startBoards();
    }
    await this.page.close();
  }

  ask(route: string, query: object): Promise<string> {
    return this.page.evaluate(askOnce, { route, query: JSON.stringify(query) });
  }

  async command<T>(cmd: string, more: object = {}): Promise<T> {
    return JSON.parse(await this.ask("commands", { cmd, ...more })) as T;
  }

  async sink<T>(path: string, command: object): Promise<T> {
    return JSON.parse(await this.ask("query_by_json", { path, args: [command] })) as T;
  }

  async ledger(): Promise<LedgerEntry[]> {
    return (await this.command<{ ledger: { blocks: LedgerEntry[] } }>("get_ledger")).ledger.blocks;
  }

  /** Has all boards begin anew. */
  async startBoards(): Promise<void> {
    await this.command("reset");
    this.hasStoppedBoards = false;
  }

  /** Has all boards stop, so that every number stands still; what is under way has then arrived. */
  async stopBoards(): Promise<void> {
    this.hasStoppedBoards = true;
    for (const { name } of (await this.ledger()).filter(({ type }) => type === "source")) {
      await this.command("stop", { endpoint: name });
    }
    let before = "";
    for (let now = await this.settled(); now !== before; now = await this.settled()) {
      before = now;
    }
  }

  private async settled(): Promise<string> {
    await new Promise((resolve) => setTimeout(resolve, 500));
    const { ledger } = await this.command<{ ledger: { balanced: boolean; blocks: object[] } }>("get_ledger");
    return JSON.stringify(ledger.blocks);
  }
}

/** Runs in the browser. */
function askOnce({ route, query }: { route: string; query: string }): Promise<string> {
  return new Promise((resolve, reject) => {
    const socket = new WebSocket(`ws://127.0.0.1:51234/${encodeURIComponent(route)}`);
    socket.onopen = () => socket.send(query);
    socket.onerror = () => reject(new Error("The server can't be reached"));
    socket.onmessage = (event) => {
      socket.close();
      resolve(String(event.data));
    };
  });
}
