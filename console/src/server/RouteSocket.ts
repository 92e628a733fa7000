/** What a socket to the server must be able to do; a browser's WebSocket, or a test's. */
export interface Socket {
  onopen: ((event: Event) => void) | null;
  onmessage: ((event: MessageEvent) => void) | null;
  onclose: ((event: CloseEvent) => void) | null;
  send(text: string): void;
  close(): void;
}
export type OpenSocket = (url: string) => Socket;

/** The server could not be asked, or didn't answer. `message` is for the operator. */
export class Unreachable extends Error {}

interface Question {
  text: string;
  answer: (text: string) => void;
  fail: (why: Unreachable) => void;
}

/**
 * A connection to one route of the server. It is opened by the first question and again by the first one after it
 * was lost. The server answers each question once, in their order, which is all that ties an answer to its question.
 */
export class RouteSocket {
  private socket: Socket | null = null;
  private isOpen = false;
  private readonly waiting: Question[] = [];
  private watchdog: ReturnType<typeof setTimeout> | null = null;

  constructor(
    private readonly url: string,
    private readonly open: OpenSocket = (url) => new WebSocket(url),
    private readonly patienceMs = 20_000,
  ) {}

  /** The answer, which is empty when nothing answers. Fails with Unreachable. */
  ask(text: string): Promise<string> {
    return new Promise((answer, fail) => {
      this.waiting.push({ text, answer, fail });
      if (this.socket === null) {
        this.connect();
      } else if (this.isOpen) {
        this.socket.send(text);
      }
      this.watch();
    });
  }

  close(): void {
    this.giveUp("the connection was closed");
  }

  private connect(): void {
    const socket = this.open(this.url);
    this.socket = socket;
    socket.onopen = () => {
      this.isOpen = true;
      this.waiting.forEach((question) => socket.send(question.text));
    };
    socket.onmessage = (event) => {
      if (typeof event.data === "string") {
        this.waiting.shift()?.answer(event.data);
        this.watch();
      }
    };
    socket.onclose = () => {
      if (this.socket === socket) {
        this.giveUp(this.isOpen ? "the connection was lost" : "no connection");
      }
    };
  }

  // A server that stands still keeps its connections: only the time tells.
  private watch(): void {
    if (this.watchdog !== null) {
      clearTimeout(this.watchdog);
      this.watchdog = null;
    }
    if (this.waiting.length > 0) {
      this.watchdog = setTimeout(
        () => this.giveUp(`no answer for ${Math.round(this.patienceMs / 1000)} s`),
        this.patienceMs,
      );
    }
  }

  private giveUp(why: string): void {
    const socket = this.socket;
    this.socket = null;
    this.isOpen = false;
    if (socket !== null) {
      socket.onopen = socket.onmessage = socket.onclose = null;
      socket.close();
    }
    this.waiting.splice(0).forEach((question) => question.fail(new Unreachable(why)));
    this.watch();
  }
}
