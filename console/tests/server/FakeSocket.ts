import type { Socket } from "../../src/server/RouteSocket";

/** The server's end of a connection, in the hands of a test. */
export class FakeSocket implements Socket {
  onopen: ((event: Event) => void) | null = null;
  onmessage: ((event: MessageEvent) => void) | null = null;
  onclose: ((event: CloseEvent) => void) | null = null;
  readonly sent: string[] = [];
  isClosed = false;

  constructor(readonly url: string) {}

  send(text: string): void {
    this.sent.push(text);
  }
  close(): void {
    this.isClosed = true;
  }
  accept(): void {
    this.onopen?.({} as Event);
  }
  answer(data: unknown): void {
    this.onmessage?.({ data } as MessageEvent);
  }
  break(): void {
    this.onclose?.({} as CloseEvent);
  }
}
