import type { RunInfo } from "../server/runControl";

const longestId = 30;

/**
 * The window's title: what an operator has to know whose other work hides the page. `flow` says whether data come;
 * null where the server isn't reached.
 */
export function titleOf(run: RunInfo | undefined, flow: string | null): string {
  return `${flow === null ? "⚠ not reached" : stateOf(run, flow)} – korvax`;
}

function stateOf(run: RunInfo | undefined, flow: string): string {
  const id = run === undefined || run.id.length <= longestId ? run?.id : `${run.id.slice(0, longestId - 1)}…`;
  switch (run?.status) {
    case "recording":
      return `● ${id} · ${flow}`;
    case "paused":
      return `‖ ${id} paused · ${flow}`;
    default:
      return flow;
  }
}
