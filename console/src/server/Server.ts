import { type OpenSocket, RouteSocket } from "./RouteSocket";

/** Whatever answers queries: the server, or a test's. */
export interface Answerer {
  /** Sends a query to a route; the answer's text, empty when nothing answers. Fails with Unreachable. */
  ask(route: string, query: object): Promise<string>;
}

/** The server, with a connection for each route that was asked. */
export class Server implements Answerer {
  private readonly routes = new Map<string, RouteSocket>();

  /** `base` ends with a slash; routes come behind it. */
  constructor(
    private readonly base: string,
    private readonly open?: OpenSocket,
  ) {}

  ask(route: string, query: object): Promise<string> {
    let socket = this.routes.get(route);
    if (socket === undefined) {
      const url = this.base + encodeURIComponent(route);
      socket = this.open ? new RouteSocket(url, this.open) : new RouteSocket(url);
      this.routes.set(route, socket);
    }
    return socket.ask(JSON.stringify(query));
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
