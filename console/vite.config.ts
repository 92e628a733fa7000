import { gzipSync } from "node:zlib";
import { defineConfig, type Plugin } from "vite";

const mostBytesOfFirstLoad = 100_000; // gzipped; a tablet at the edge of the network has to load them

// Refuses to build a page whose first load is larger: what isn't needed at once belongs into a dynamic import.
function limitFirstLoad(): Plugin {
  return {
    name: "limit-first-load",
    generateBundle(_, bundle) {
      const parts = Object.values(bundle).filter((part) => part.type === "asset" || !part.isDynamicEntry);
      const bytes = parts
        .map((part) => gzipSync(part.type === "asset" ? part.source : part.code).length)
        .reduce((sum, size) => sum + size, 0);
      if (bytes > mostBytesOfFirstLoad) {
        this.error(`The first load is ${bytes} bytes gzipped, more than ${mostBytesOfFirstLoad}.`);
      }
    },
  };
}

// The page is served from any folder of a web server, so nothing in it names an absolute path.
export default defineConfig({
  base: "./",
  plugins: [limitFirstLoad()],
  esbuild: { jsx: "automatic", jsxImportSource: "preact" },
  build: { target: "es2022", sourcemap: false, reportCompressedSize: true },
  server: {
    proxy: {
      "/socket": { target: "ws://127.0.0.1:51234", ws: true, rewrite: (path) => path.replace(/^\/socket/, "") },
    },
  },
});
