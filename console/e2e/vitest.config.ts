import { defineConfig } from "vitest/config";

// One after the other: there is one port for the server.
export default defineConfig({
  test: {
    dir: "e2e",
    include: [process.env["KORVAX_TAKE_PICTURES"] ? "pictures.ts" : "**/*.test.ts"],
    pool: "forks",
    fileParallelism: false,
    testTimeout: 120_000,
    hookTimeout: 120_000,
    expect: { poll: { timeout: 60_000, interval: 200 } },
    globalSetup: "e2e/support/requirements.ts",
  },
});
