import { spawn } from "node:child_process";
import { places } from "./places";
import { until } from "./until";

/** The console as the web server hands it out. */
export interface Site {
  url: string;
  close: () => Promise<void>;
}

const port = 8080; // free in a network of its own

/** Starts the web server as the demo does; it serves the built page, and passes /socket/<route> on. */
export async function serveConsole(): Promise<Site> {
  const url = `http://127.0.0.1:${port}/`;
  const server = spawn(places.webServer, [String(port)], { stdio: ["ignore", "inherit", "inherit"] });
  const ended = new Promise<void>((done) => server.once("exit", () => done()));
  await until("the web server answers", async () => {
    if (server.exitCode !== null) {
      throw new Error("The web server ended before it answered; what it says is above");
    }
    return (await fetch(url).catch(() => null))?.ok === true;
  });
  return {
    url,
    close: async () => {
      server.kill();
      await ended;
    },
  };
}
