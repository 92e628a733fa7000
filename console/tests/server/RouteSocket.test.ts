import { afterEach, beforeEach, describe, expect, it, vi } from "vitest";
import { RouteSocket, Unreachable } from "../../src/server/RouteSocket";
import { Server, serverBaseOf } from "../../src/server/Server";
import { FakeSocket } from "./FakeSocket";

let sockets: FakeSocket[];
const open = (url: string): FakeSocket => {
  sockets.push(new FakeSocket(url));
  return sockets.at(-1)!;
};
const patience = 5_000;
const route = (): RouteSocket => new RouteSocket("ws://x/a", open, patience);

beforeEach(() => {
  sockets = [];
  vi.useFakeTimers();
});
afterEach(() => vi.useRealTimers());

describe("A route's connection", () => {
  it("is opened by the first question, and only once", () => {
    const socket = route();
    expect(sockets).toHaveLength(0);
    void socket.ask("1").catch(() => undefined);
    void socket.ask("2").catch(() => undefined);
    expect(sockets.map(({ url }) => url)).toEqual(["ws://x/a"]);
  });

  it("sends what was asked before it was open, in order, when it opens", () => {
    const socket = route();
    void socket.ask("1").catch(() => undefined);
    void socket.ask("2").catch(() => undefined);
    expect(sockets[0]!.sent).toEqual([]);
    sockets[0]!.accept();
    void socket.ask("3").catch(() => undefined);
    expect(sockets[0]!.sent).toEqual(["1", "2", "3"]);
  });

  it("gives answers to questions in their order, empty ones too", async () => {
    const socket = route();
    const answers = Promise.all([socket.ask("1"), socket.ask("2"), socket.ask("3")]);
    sockets[0]!.accept();
    ["a", "", "c"].forEach((answer) => sockets[0]!.answer(answer));
    expect(await answers).toEqual(["a", "", "c"]);
  });

  it("passes over what nobody asked for, and what isn't text", async () => {
    const socket = route();
    const first = socket.ask("1");
    sockets[0]!.accept();
    sockets[0]!.answer(new ArrayBuffer(3));
    sockets[0]!.answer("a");
    sockets[0]!.answer("nobody asked");
    const second = socket.ask("2");
    sockets[0]!.answer("b");
    expect([await first, await second]).toEqual(["a", "b"]);
  });

  it("fails all open questions when it is lost, and connects again for the next", async () => {
    const socket = route();
    const failed = Promise.allSettled([socket.ask("1"), socket.ask("2")]);
    sockets[0]!.accept();
    sockets[0]!.break();
    expect((await failed).map(({ status }) => status)).toEqual(["rejected", "rejected"]);
    const next = socket.ask("3");
    expect(sockets).toHaveLength(2);
    sockets[1]!.accept();
    sockets[1]!.answer("c");
    expect(await next).toBe("c");
    expect(sockets[1]!.sent).toEqual(["3"]);
  });

  it("tells whether it was lost or never there", async () => {
    const socket = route();
    const never = socket.ask("1");
    sockets[0]!.break();
    await expect(never).rejects.toThrow(new Unreachable("no connection"));
    const lost = socket.ask("2");
    sockets[1]!.accept();
    sockets[1]!.break();
    await expect(lost).rejects.toThrow(new Unreachable("the connection was lost"));
  });

  it("gives up a server that stands still, and one that can't be reached at all", async () => {
    for (const isOpen of [true, false]) {
      const socket = route();
      const silent = socket.ask("1");
      if (isOpen) {
        sockets.at(-1)!.accept();
      }
      const failure = expect(silent).rejects.toThrow(new Unreachable("no answer for 5 s"));
      vi.advanceTimersByTime(patience);
      await failure;
      expect(sockets.at(-1)!.isClosed).toBe(true);
    }
  });

  it("is patient as long as answers come", async () => {
    const socket = route();
    const [first, second] = [socket.ask("1"), socket.ask("2")];
    sockets[0]!.accept();
    vi.advanceTimersByTime(patience - 1);
    sockets[0]!.answer("a");
    vi.advanceTimersByTime(patience - 1);
    sockets[0]!.answer("b");
    vi.advanceTimersByTime(10 * patience);
    expect([await first, await second]).toEqual(["a", "b"]);
    expect(sockets[0]!.isClosed).toBe(false);
  });

  it("doesn't take a late end of an old connection for one of the new", async () => {
    const socket = route();
    const first = socket.ask("1");
    const old = sockets[0]!;
    const onOldClose = old.onclose!;
    old.break();
    await expect(first).rejects.toThrow();
    const second = socket.ask("2");
    onOldClose({} as CloseEvent);
    sockets[1]!.accept();
    sockets[1]!.answer("b");
    expect(await second).toBe("b");
  });
});

describe("The server", () => {
  it("has a connection for each route, whatever is in its name", () => {
    const server = new Server("ws://x/socket/", open);
    for (const name of ["commands", "dumper 1/a", "commands"]) {
      void server.ask(name, { cmd: "x" }).catch(() => undefined);
    }
    expect(sockets.map(({ url }) => url)).toEqual(["ws://x/socket/commands", "ws://x/socket/dumper%201%2Fa"]);
    sockets[0]!.accept();
    expect(sockets[0]!.sent).toEqual(['{"cmd":"x"}', '{"cmd":"x"}']);
  });

  it("is found beside the page, in whatever folder that is, by the same kind of connection", () => {
    const base = (href: string): string => serverBaseOf({ href });
    expect(base("http://lab:8080/")).toBe("ws://lab:8080/socket/");
    expect(base("http://lab:8080/index.html?x=1#/spectra")).toBe("ws://lab:8080/socket/");
    expect(base("https://lab/daq/console/#/rates")).toBe("wss://lab/daq/console/socket/");
  });
});
