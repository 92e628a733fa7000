import { type ChildProcess, spawn } from "node:child_process";
import { closeSync, mkdtempSync, openSync, readFileSync, rmSync, writeFileSync } from "node:fs";
import { tmpdir } from "node:os";
import { join } from "node:path";
import { places } from "./places";
import { until } from "./until";

const ready = "KORVAX IS STARTED AND READY";

/** The server with simulated boards, in a folder of its own. */
export class Acquisition {
  readonly folder = mkdtempSync(join(tmpdir(), "korvax-console-"));
  private readonly log = join(this.folder, "server.log");
  private process: ChildProcess | null = null;

  /** `change` may alter the demo's configuration, which stores into the folder. */
  async start(change: (configuration: Configuration) => void = () => undefined): Promise<void> {
    const configuration = JSON.parse(readFileSync(places.configuration, "utf8")) as Configuration;
    configuration.storage.file_path = this.folder;
    change(configuration);
    const file = join(this.folder, "configuration.json");
    writeFileSync(file, JSON.stringify(configuration));
    const log = openSync(this.log, "w");
    this.process = spawn(places.server, ["-c", file], { cwd: this.folder, stdio: ["ignore", log, log] });
    closeSync(log);
    await until("the server is ready", () => {
      if (this.process?.exitCode !== null) {
        throw new Error(`The server ended before it was ready:\n${this.lastLines()}`);
      }
      return readFileSync(this.log, "utf8").includes(ready);
    });
  }

  /** Ends it at once, as a fault would. */
  async kill(signal: NodeJS.Signals = "SIGKILL"): Promise<void> {
    const running = this.process;
    this.process = null;
    if (running !== null && running.exitCode === null && running.signalCode === null) {
      const ended = new Promise((resolve) => running.once("exit", resolve));
      running.kill(signal);
      await ended;
    }
  }

  /** Has it stand still, and go on, with its connections open. */
  pause(): void {
    this.process?.kill("SIGSTOP");
  }
  resume(): void {
    this.process?.kill("SIGCONT");
  }

  async close(): Promise<void> {
    await this.kill();
    rmSync(this.folder, { recursive: true, force: true });
  }

  private lastLines(): string {
    return readFileSync(this.log, "utf8").split("\n").slice(-15).join("\n");
  }
}

/** What tests change of it. */
export interface Configuration {
  storage: { file_path: string; enable_list: boolean; enable_wave: boolean; enable_mcs: boolean };
  processing: { filter_chain: { enable: boolean; name: string; chain: { name: string }[] }[] }[];
}
