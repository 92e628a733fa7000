import { afterEach, beforeEach, describe, expect, it, vi } from "vitest";
import { RouteSocket, type Unreachable } from "../../src/server/RouteSocket";
import { order, Server, serverBaseOf } from "../../src/server/Server";
import { wake } from "../../src/server/wake";
import { FakeSocket } from "./FakeSocket";

let sockets: FakeSocket[];
const open = (url: string): FakeSocket => {
  sockets.push(new FakeSocket(url));
  return sockets.at(-1)!;
};
const patience = 5_000;
const route = (): RouteSocket => new RouteSocket("ws://x/a", { open, patienceMs: patience, backoff: null });

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
    await expect(never).rejects.toMatchObject({ message: "no connection", wasSent: false });
    const lost = socket.ask("2");
    sockets[1]!.accept();
    sockets[1]!.break();
    await expect(lost).rejects.toMatchObject({ message: "the connection was lost", wasSent: true });
  });

  it("gives up a server that stands still, and one that can't be reached at all", async () => {
    for (const isOpen of [true, false]) {
      const socket = route();
      const silent = socket.ask("1");
      if (isOpen) {
        sockets.at(-1)!.accept();
      }
      const failure = expect(silent).rejects.toMatchObject({ message: "no answer for 5 s", wasSent: isOpen });
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

  it("loses its patience with the oldest question, whatever is asked meanwhile", async () => {
    const socket = route();
    const failed = Promise.allSettled([socket.ask("1")]);
    sockets[0]!.accept();
    for (let i = 0; i < 5; ++i) {
      vi.advanceTimersByTime(patience / 5 - 1);
      void socket.ask("more").catch(() => undefined);
    }
    vi.advanceTimersByTime(5);
    expect(sockets[0]!.isClosed).toBe(true);
    expect(await failed).toMatchObject([{ reason: { message: "no answer for 5 s", wasSent: true } }]);
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
  const fails = async (asked: Promise<string>): Promise<string> =>
    asked.then(() => "", (error: Unreachable) => error.message);

  it("is left alone after a failure, for longer each time, but for orders", async () => {
    const server = new Server("ws://x/", open);
    for (const rest of [1_000, 2_000, 4_000, 8_000, 10_000, 10_000]) {
      const before = sockets.length;
      const asked = fails(server.ask("a", {}));
      expect(sockets).toHaveLength(before + 1);
      sockets.at(-1)!.break();
      expect(await asked).toBe("no connection");
      vi.advanceTimersByTime(0.74 * rest);
      expect(await fails(server.ask("a", {}))).toBe("no connection");
      expect(sockets).toHaveLength(before + 1);
      vi.advanceTimersByTime(0.52 * rest);
    }
    const before = sockets.length;
    for (let i = 0; i < 2; ++i) {
      const asked = fails(order(server, "a", {}));
      sockets.at(-1)!.break();
      expect(await asked).toBe("no connection; nothing was ordered");
    }
    expect(sockets).toHaveLength(before + 2);
  });

  it("is asked at once when another route is back, and when the page is looked at", async () => {
    const server = new Server("ws://x/", open);
    const [a, b] = [fails(server.ask("a", {})), fails(server.ask("b", {}))];
    sockets.forEach((socket) => socket.break());
    expect([await a, await b]).toEqual(["no connection", "no connection"]);
    vi.advanceTimersByTime(1_250);
    const back = server.ask("a", {});
    void fails(server.ask("b", {}));
    sockets[3]!.break();
    void fails(server.ask("b", {}));
    expect(sockets).toHaveLength(4);
    sockets[2]!.accept();
    sockets[2]!.answer("x");
    expect(await back).toBe("x");
    void fails(server.ask("b", {}));
    expect(sockets).toHaveLength(5);
    sockets[4]!.break();
    wake();
    void fails(server.ask("b", {}));
    expect(sockets).toHaveLength(6);
  });

  it("has orders pass by the questions that wait for an answer", async () => {
    const server = new Server("ws://x/", open);
    const slow = fails(server.ask("a", { cmd: "slow" }));
    const done = order(server, "a", { cmd: "off" });
    sockets.forEach((socket) => socket.accept());
    expect(sockets.map(({ url, sent }) => [url, sent])).toEqual([
      ["ws://x/a", ['{"cmd":"slow"}']],
      ["ws://x/a", ['{"cmd":"off"}']],
    ]);
    vi.advanceTimersByTime(19_999);
    sockets[1]!.answer("done");
    expect(await done).toBe("done");
    vi.advanceTimersByTime(1);
    expect(await slow).toBe("no answer for 20 s");
  });

  it("gets each order by a new connection, as an idle one may be dead, but for those under way", async () => {
    const server = new Server("ws://x/", open);
    const [on, off] = [order(server, "a", { cmd: "on" }), order(server, "a", { cmd: "off" })];
    expect(sockets).toHaveLength(1);
    sockets[0]!.accept();
    sockets[0]!.answer("1");
    expect([await on, sockets[0]!.isClosed]).toEqual(["1", false]);
    sockets[0]!.answer("2");
    expect([await off, sockets[0]!.isClosed]).toEqual(["2", true]);
    const next = order(server, "a", { cmd: "next" });
    expect(sockets).toHaveLength(2);
    sockets[1]!.accept();
    expect(sockets[1]!.sent).toEqual(['{"cmd":"next"}']);
    sockets[1]!.answer("3");
    expect(await next).toBe("3");
  });

  it("is asked by a connection that stays", async () => {
    const server = new Server("ws://x/", open);
    const asked = server.ask("a", {});
    sockets[0]!.accept();
    sockets[0]!.answer("1");
    await asked;
    void fails(server.ask("a", {}));
    expect([sockets.length, sockets[0]!.isClosed, sockets[0]!.sent.length]).toEqual([1, false, 2]);
  });

  it("that doesn't answer an order may still carry it out, and that is said", async () => {
    const server = new Server("ws://x/", open);
    for (const [what, why] of [
      ["lost", "the connection was lost; what was ordered may still be carried out"],
      ["late", "no answer for 20 s; what was ordered may still be carried out"],
    ]) {
      const asked = fails(order(server, "a", {}));
      sockets.at(-1)!.accept();
      if (what === "lost") {
        sockets.at(-1)!.break();
      } else {
        vi.advanceTimersByTime(20_000);
      }
      expect(await asked).toContain(why);
    }
  });

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
