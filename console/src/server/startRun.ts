import { isOn } from "../model/runState";
import { BadAnswer, parseJson } from "./answers";
import { getDumpCounts, type Recorder } from "./dumpCounts";
import { expectDone } from "./queries";
import { commands, getRunInfo, type RunStatus } from "./runControl";
import { type Answerer, order } from "./Server";

/** There is a folder of this id, also where nothing came of a start: the next run needs another one. */
export class IdTaken extends BadAnswer {}

/**
 * Refused while a run is recorded, in whose files this one would go on. Fails when nothing records afterwards, as
 * the server starts what its configuration enables and says "true" whatever that is. `recorders` is all that can
 * record; null when it isn't known.
 */
export async function startRun(
  server: Answerer,
  runId: string,
  recorders: readonly Recorder[] | null,
): Promise<void> {
  const busy = (await statesOf(server, recorders ?? [])).find(isOn);
  if (busy !== undefined) {
    throw new BadAnswer(`${busy.what} is ${busy.status}: stop it before you start another run.`);
  }
  await orderStart(server, runId);
  if (recorders !== null && (await isNothingOn(server, recorders))) {
    throw new IdTaken(
      `Nothing is recorded of run ${runId}: does the configuration have a block that records, is its ` +
        '"enable_list", "enable_wave" or "enable_mcs" true in the "storage", and can the "file_path" be written?',
    );
  }
}

async function orderStart(server: Answerer, runId: string): Promise<void> {
  const answer = parseJson(await order(server, commands, { cmd: "start_dump", run_id: runId }), "run control");
  try {
    expectDone(answer, "run control");
  } catch (error) {
    if (error instanceof BadAnswer && error.message === "Existing Folder") {
      throw new IdTaken(`There is a folder of run ${runId} already ("Existing Folder"): choose another id.`);
    }
    throw error instanceof BadAnswer ? new BadAnswer(`Run ${runId} wasn't started: ${error.message}`) : error;
  }
}

interface State {
  what: string;
  status: RunStatus;
}

/** Of run and recorders. Dumpers tell of the run. */
async function statesOf(server: Answerer, recorders: readonly Recorder[]): Promise<State[]> {
  const others = recorders.filter(({ type }) => type !== "dumper");
  const [runs, states] = await Promise.all([
    getRunInfo(server),
    Promise.all(others.map((recorder) => stateOf(server, recorder))),
  ]);
  return [...runs.map(({ id, status }) => ({ what: `Run ${id}`, status })), ...states];
}

/** One block that doesn't tell keeps no run from its start. */
async function stateOf(server: Answerer, recorder: Recorder): Promise<State> {
  const status = await getDumpCounts(server, recorder).then(
    (counts) => counts.status,
    () => "unknown" as const,
  );
  return { what: recorder.name, status };
}

/** Whether that is sure: the run was started, and a question that fails says nothing else. */
async function isNothingOn(server: Answerer, recorders: readonly Recorder[]): Promise<boolean> {
  try {
    return (await statesOf(server, recorders)).every(({ status }) => status === "stopped");
  } catch {
    return false;
  }
}
