import { execFileSync } from "node:child_process";
import { existsSync, mkdtempSync, readdirSync, readFileSync, rmSync } from "node:fs";
import { tmpdir } from "node:os";
import { dirname, join } from "node:path";
import { places } from "./places";

const client = join(dirname(places.server), "korvaxctl");

/** The events in the files that a dumper wrote. */
export function storedEvents(folder: string): number {
  const files = readdirSync(folder).filter((name) => /^dumper1_\d+\.bin$/.test(name));
  const target = mkdtempSync(join(tmpdir(), "korvax-read-"));
  try {
    const csv = join(target, "events.csv");
    execFileSync(client, ["files", "csv", ...files.map((name) => join(folder, name)), "--output", csv]);
    return readFileSync(csv, "utf8").trimEnd().split("\n").length;
  } finally {
    rmSync(target, { recursive: true });
  }
}

/**
 * Whether the run in the folder is what the server noted of it. It ends its files at the first data behind the stop.
 */
export function isWhole(folder: string): boolean {
  try {
    return existsSync(folder) && execFileSync(client, ["files", "verify", folder], { encoding: "utf8" }) !== "";
  } catch {
    return false;
  }
}
