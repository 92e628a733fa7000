import { BadAnswer } from "./answers";
import { type Answerer, order } from "./Server";
import { type BoardAnswer, readBoardValues } from "./tolerantValues";

// What is asked of high-voltage blocks. They are found by their path, "Hardware/<board>".

const byPath = "query_by_json";

/** The values that the board has at this moment: of all parameters, or of those that can't be written. */
export async function getBoardValues(
  server: Answerer,
  path: string,
  param: "all" | "read_only",
): Promise<BoardAnswer> {
  const answer = await server.ask(byPath, { path, args: [{ cmd: "get_all_ch_values", param }] });
  if (answer === "") {
    throw new BadAnswer(
      `No block answers for ${path}: it may have been renamed or taken out of the configuration.`,
    );
  }
  if (/^\s*\{\s*"response"\s*:\s*"error"/.test(answer)) {
    throw new BadAnswer(
      `${path} has no board (${reasonOf(answer)}): ` +
        'the "source" of the block must be the "board_name" of an enabled board.',
    );
  }
  return readBoardValues(answer);
}

function reasonOf(answer: string): string {
  return /"reason"\s*:\s*"([^"]{1,100})/.exec(answer)?.[1] ?? "no reason given";
}

/** The names of the parameters that can't be written. A name that is missed would be taken for a writable one. */
export async function getReadOnlyNames(server: Answerer, path: string): Promise<ReadonlySet<string>> {
  const { values, complaints } = await getBoardValues(server, path, "read_only");
  if (complaints[0] !== undefined) {
    throw new BadAnswer(`What ${path} answers can't be read whole. ${complaints[0]}`);
  }
  return new Set(values.map((value) => value.name));
}

/**
 * Switches the board's high voltage. The block's answer is empty, as that of no block would be: that it is there
 * shows only in the values that are read later. They aren't waited for, as they take a board's time.
 */
export async function switchBoard(server: Answerer, path: string, on: boolean): Promise<void> {
  const answer = await order(server, byPath, { path, args: [{ cmd: on ? "hv_global_on" : "hv_global_off" }] });
  if (answer !== "") {
    const said = answer.slice(0, 80);
    throw new BadAnswer(`${path} answers ${said} where nothing should be: it may not have switched.`);
  }
}
