import { dirname, resolve } from "node:path";
import { fileURLToPath } from "node:url";

const console = resolve(dirname(fileURLToPath(import.meta.url)), "../..");
const place = (variable: string, usual: string): string =>
  resolve(process.env[variable] ?? resolve(console, usual));

/** Where things are; each can be elsewhere, as the environment tells. */
export const places = {
  server: place("KORVAX_SERVER", "../build/bin/korvax-boards-server"),
  configuration: resolve(console, "../examples/demo.json"),
  webServer: place("KORVAX_WEB_SERVER", "../serving/start-demo"),
  browser: place("CHROMIUM", "/usr/bin/chromium"),
  pictures: place("KORVAX_PICTURES", "../docs/pictures"),
};
