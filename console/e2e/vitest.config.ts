import { defineConfig } from "vitest/config";

/** Something else than tests, that is asked for by name. */
const task = process.env["KORVAX_BROWSER_TASK"];

// One after the other: there is one port for the server.
export default defineConfig({
  test: {
    dir: "e2e",
    include: [task === undefined ? "**/*.test.ts" : `${task}.ts`],
    pool: "forks",
    fileParallelism: false,
    testTimeout: 120_000,
    hookTimeout: 120_000,
    expect: { poll: { timeout: 60_000, interval: 200 } },
    globalSetup: "e2e/support/requirements.ts",
  },
});
