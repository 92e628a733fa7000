import { asArray, asObject, BadAnswer, type Json, type JsonObject, parseJson } from "./answers";
import { expectDone } from "./queries";
import { type Answerer, order } from "./Server";

// What is asked of run control, the block "commands".

export const commands = "commands";

export type RunCommand = "stop_dump" | "pause_dump" | "restart_dump" | "reset" | "hv_on" | "hv_off";

/** Fails with BadAnswer, whose message is what the server says, when it refuses. */
export async function sendRunCommand(server: Answerer, cmd: RunCommand): Promise<void> {
  expectDone(parseJson(await order(server, commands, { cmd }), "run control"), "run control");
}

/** Goes on with a run that is paused. After a stop the server would write over the run's files: refused. */
export async function resumeRun(server: Answerer): Promise<void> {
  const runs = await getRunInfo(server);
  if (runs.length === 0 || runs.some(({ status }) => status !== "paused")) {
    throw new BadAnswer(
      "The run isn't paused any more, and going on would write over its files. Start a new run.",
    );
  }
  await sendRunCommand(server, "restart_dump");
}

export async function askCommands(server: Answerer, cmd: string): Promise<JsonObject> {
  return asObject(parseJson(await server.ask(commands, { cmd }), cmd), cmd);
}

export type RunStatus = "stopped" | "recording" | "paused" | "unknown";

/** What a dumper says of its run. */
export interface RunInfo {
  name: string;
  status: RunStatus;
  id: string;
  eventRate: number; // per second
  storedEvents: number;
  runningTime: number; // s
  usedSpace: number; // bytes of the current file
}

export async function getRunInfo(server: Answerer): Promise<RunInfo[]> {
  return parseRunInfo(await server.ask(commands, { cmd: "get_run_info" }));
}

export function parseRunInfo(text: string): RunInfo[] {
  return asArray(parseJson(withQuotedIds(text), "the run"), "the run").map(runInfoOf);
}

/** The run id stands in the answer without quotes, whatever it is. */
function withQuotedIds(text: string): string {
  const [before, behind] = [',"id":', ',"stored_events":'];
  let quoted = "";
  let done = 0;
  for (;;) {
    const from = text.indexOf(before, done) + before.length;
    const to = from < before.length ? -1 : text.indexOf(behind, from);
    if (to < 0) {
      return quoted + text.slice(done);
    }
    quoted += text.slice(done, from) + JSON.stringify(text.slice(from, to));
    done = to;
  }
}

const statuses: readonly RunStatus[] = ["stopped", "recording", "paused"];

/** The server tells it as a number. */
export function statusOf(number: Json | undefined): RunStatus {
  return (typeof number === "number" ? statuses[number] : undefined) ?? "unknown";
}

function runInfoOf(entry: Json): RunInfo {
  const values = asObject(entry, "the run");
  const number = (key: string): number => (typeof values[key] === "number" ? (values[key] as number) : NaN);
  return {
    name: String(values["name"] ?? ""),
    status: statusOf(values["status"]),
    id: String(values["id"] ?? ""),
    eventRate: number("event_rate"),
    storedEvents: number("stored_events"),
    runningTime: number("running_time"),
    usedSpace: number("used_space"),
  };
}
