import { type Browser, chromium, type Page } from "playwright-core";
import { expect, test as base } from "vitest";
import { Acquisition } from "./Acquisition";
import { places } from "./places";
import { Client } from "./question";
import { serveConsole, type Site } from "./serveConsole";

export { expect };

export interface Fixtures {
  browser: Browser;
  site: Site;
  /** The server, which runs; one that a test has killed it starts again. */
  acquisition: Acquisition;
  client: Client;
  /** A page that isn't opened yet. A test fails when the browser logs an error that `mayLog` doesn't hold. */
  page: Page;
  mayLog: RegExp[];
}

/** What the browser itself logs when a connection is lost. */
export const lostConnection = /WebSocket connection to .* failed/;

export const test = base.extend<Fixtures>({
  browser: [
    async ({}, use) => {
      // No sandbox within the sandbox that the tests are in; all pages are our own.
      const browser = await chromium.launch({ executablePath: places.browser, chromiumSandbox: false });
      await use(browser);
      await browser.close();
    },
    { scope: "file" },
  ],
  site: [
    async ({}, use) => {
      const site = await serveConsole();
      await use(site);
      await site.close();
    },
    { scope: "file" },
  ],
  acquisition: [
    async ({}, use) => {
      const acquisition = new Acquisition();
      try {
        await acquisition.start();
        await use(acquisition);
      } finally {
        await acquisition.close();
      }
    },
    { scope: "file" },
  ],
  client: async ({ browser }, use) => {
    const client = await Client.open(browser);
    await use(client);
    await client.close();
  },
  mayLog: async ({}, use) => use([]),
  page: async ({ browser, mayLog }, use) => {
    const page = await browser.newPage({ viewport: { width: 1280, height: 800 } });
    const logged: string[] = [];
    page.on("console", (message) => message.type() === "error" && logged.push(message.text()));
    page.on("pageerror", (error) => logged.push(String(error)));
    await use(page);
    await page.close();
    expect(logged.filter((text) => !mayLog.some((allowed) => allowed.test(text)))).toEqual([]);
  },
});
