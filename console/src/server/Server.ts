import { Backoff } from "./Backoff";
import { type OpenSocket, RouteSocket, Unreachable } from "./RouteSocket";
import { onWake, wake } from "./wake";

/** A question changes nothing; an order does. */
export type Kind = "question" | "order";

/** Whatever answers queries: the server, or a test's. */
export interface Answerer {
  /** Sends a query to a route; the answer's text, empty when nothing answers. Fails with Unreachable. */
  ask(route: string, query: object, kind?: Kind): Promise<string>;
}

/**
 * The server, with a connection for each route that was asked, and one of their own for a route's orders: they
 * don't wait behind a large answer, nor fail with a question that has none, nor rest after a failure. An order's
 * ends with its answer: one that lay idle for hours may be dead without a word, and would swallow the next order.
 */
export class Server implements Answerer {
  private readonly routes = new Map<string, RouteSocket>();

  /** `base` ends with a slash; routes come behind it. */
  constructor(
    private readonly base: string,
    private readonly open?: OpenSocket,
  ) {
    onWake(() => this.routes.forEach((socket) => socket.hurry()));
  }

  ask(route: string, query: object, kind: Kind = "question"): Promise<string> {
    const key = `${kind} ${route}`;
    let socket = this.routes.get(key);
    if (socket === undefined) {
      socket = new RouteSocket(this.base + encodeURIComponent(route), {
        ...(this.open && { open: this.open }),
        backoff: kind === "order" ? null : new Backoff(),
        isBrief: kind === "order",
        onBack: wake,
      });
      this.routes.set(key, socket);
    }
    return socket.ask(JSON.stringify(query));
  }
}

/** Sends what changes something. Whoever isn't answered can't know whether it was done, and is told so. */
export async function order(server: Answerer, route: string, query: object): Promise<string> {
  try {
    return await server.ask(route, query, "order");
  } catch (error) {
    if (!(error instanceof Unreachable)) {
      throw error;
    }
    const what = error.wasSent
      ? "what was ordered may still be carried out: look what is before you order it again"
      : "nothing was ordered";
    throw new Unreachable(`${error.message}; ${what}`, error.wasSent);
  }
}

/** Where the page's web server passes WebSockets on to the server. */
export function serverBaseOf(location: { href: string }): string {
  const url = new URL("socket/", location.href);
  url.protocol = url.protocol === "https:" ? "wss:" : "ws:";
  url.search = "";
  url.hash = "";
  return url.href;
}
