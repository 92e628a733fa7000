import { createHash } from "node:crypto";
import { createServer, type IncomingMessage, type Server } from "node:http";
import type { Duplex } from "node:stream";

const port = 51234; // where the web server passes connections on to
const magic = "258EAFA5-E914-47DA-95CA-C5AB0DC85B11"; // RFC 6455, section 1.3

/** The answer to a query. */
export type Answer = (query: { cmd?: string; path?: string }) => string;

/** Answers in the server's place, over the network: what a browser pays for long answers is then all its own. */
export async function startPreparedServer(answer: Answer): Promise<() => void> {
  const sockets = new Set<Duplex>();
  const server: Server = createServer();
  server.on("upgrade", (request: IncomingMessage, socket: Duplex) => {
    sockets.add(socket);
    const key = createHash("sha1").update(`${request.headers["sec-websocket-key"]}${magic}`).digest("base64");
    const lines = ["HTTP/1.1 101 Switching Protocols", "Upgrade: websocket", "Connection: Upgrade"];
    socket.write(`${[...lines, `Sec-WebSocket-Accept: ${key}`].join("\r\n")}\r\n\r\n`);
    socket.on("data", (frames: Buffer) => {
      for (const text of textsOf(frames)) {
        socket.write(frameOf(answer(JSON.parse(text) as object)));
      }
    });
    socket.on("error", () => socket.destroy());
  });
  await new Promise<void>((listening) => server.listen(port, "127.0.0.1", listening));
  return () => {
    sockets.forEach((socket) => socket.destroy());
    server.close();
  };
}

/** The texts of frames that came whole: the console's questions are short. */
function textsOf(frames: Buffer): string[] {
  if (frames.length === 0) {
    return [];
  }
  const isText = (frames[0]! & 0x0f) === 1;
  const [length, start] = (frames[1]! & 0x7f) === 126 ? [frames.readUInt16BE(2), 4] : [frames[1]! & 0x7f, 2];
  const mask = frames.subarray(start, start + 4);
  const end = start + 4 + length;
  const text = Buffer.from(frames.subarray(start + 4, end).map((byte, i) => byte ^ mask[i % 4]!)).toString();
  return [...(isText ? [text] : []), ...textsOf(frames.subarray(end))];
}

/** A length takes as few bytes as it can, or the browser hangs up. */
function frameOf(text: string): Buffer {
  const body = Buffer.from(text);
  const first = 0x81; // a whole text
  if (body.length < 126) {
    return Buffer.concat([Buffer.from([first, body.length]), body]);
  }
  const isShort = body.length < 65536;
  const head = Buffer.alloc(isShort ? 4 : 10);
  head.writeUInt8(first, 0);
  head.writeUInt8(isShort ? 126 : 127, 1);
  if (isShort) {
    head.writeUInt16BE(body.length, 2);
  } else {
    head.writeBigUInt64BE(BigInt(body.length), 2);
  }
  return Buffer.concat([head, body]);
}
