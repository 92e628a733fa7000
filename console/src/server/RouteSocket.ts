import { Backoff } from "./Backoff";

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
export class Unreachable extends Error {
  /** `wasSent`: the question left this page, and may still be answered to nobody. */
  constructor(
    message: string,
    readonly wasSent = false,
  ) {
    super(message);
  }
}

interface Question {
  text: string;
  answer: (text: string) => void;
  fail: (why: Unreachable) => void;
}

export interface RouteOptions {
  open?: OpenSocket;
  patienceMs?: number;
  /** How often it is tried again; null: whenever it is asked. */
  backoff?: Backoff | null;
  /** Whether it is closed whenever nothing waits for an answer. */
  isBrief?: boolean;
  /** Called when it answers again after it failed. */
  onBack?: () => void;
}

/**
 * A connection to one route of the server. It is opened by the first question and again by the first one after it
 * was lost, but for a rest between. The server answers each question once, in their order, which is all that ties
 * an answer to its question.
 */
export class RouteSocket {
  private socket: Socket | null = null;
  private isOpen = false;
  private readonly waiting: Question[] = [];
  private watchdog: ReturnType<typeof setTimeout> | null = null;
  private lastFault = "no connection";
  private readonly open: OpenSocket;
  private readonly patienceMs: number;
  private readonly backoff: Backoff | null;

  constructor(
    private readonly url: string,
    private readonly options: RouteOptions = {},
  ) {
    this.open = options.open ?? ((url) => new WebSocket(url));
    this.patienceMs = options.patienceMs ?? 20_000;
    this.backoff = options.backoff === undefined ? new Backoff() : options.backoff;
  }

  /** The answer, which is empty when nothing answers. Fails with Unreachable. */
  ask(text: string): Promise<string> {
    if (this.socket === null && this.backoff?.isResting) {
      return Promise.reject(new Unreachable(this.lastFault));
    }
    return new Promise((answer, fail) => {
      this.waiting.push({ text, answer, fail });
      if (this.socket === null) {
        this.connect();
      } else if (this.isOpen) {
        this.socket.send(text);
      }
      if (this.watchdog === null) {
        this.watch();
      }
    });
  }

  /** Has the next question connect, whatever failed before. */
  hurry(): void {
    this.backoff?.clear();
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
        this.hear(event.data);
      }
    };
    socket.onclose = () => {
      if (this.socket === socket) {
        this.giveUp(this.isOpen ? "the connection was lost" : "no connection");
      }
    };
  }

  private hear(text: string): void {
    this.waiting.shift()?.answer(text);
    this.watch();
    if (this.backoff?.hasFailed) {
      this.backoff.clear();
      this.options.onBack?.();
    }
    if (this.options.isBrief === true && this.waiting.length === 0) {
      this.close();
    }
  }

  // A server that stands still keeps its connections: only the time tells. It is that of the oldest question, as
  // what is asked meanwhile makes no server alive; each answer begins it anew, as the next one's turn comes then.
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
    const { socket, isOpen } = this;
    this.socket = null;
    this.isOpen = false;
    this.lastFault = why;
    this.backoff?.failed();
    if (socket !== null) {
      socket.onopen = socket.onmessage = socket.onclose = null;
      socket.close();
    }
    this.waiting.splice(0).forEach((question) => question.fail(new Unreachable(why, isOpen)));
    this.watch();
  }
}
