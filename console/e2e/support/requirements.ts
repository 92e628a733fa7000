import { existsSync } from "node:fs";
import { places } from "./places";

/** Says what is missing before the first test fails for it. */
export default function (): void {
  need(places.server, "build the server: cmake --preset release && cmake --build build");
  need(places.webServer, "it belongs to the project: check it out whole");
  need(places.browser, "install the browser: Debian's package chromium");
}

function need(path: string, remedy: string): void {
  if (!existsSync(path)) {
    throw new Error(`${path} is missing; ${remedy}`);
  }
}
