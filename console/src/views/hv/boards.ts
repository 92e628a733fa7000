import type { Block } from "../../model/blocks";
import { getBoardValues } from "../../server/hv";
import { faultOf } from "../../server/poll";
import { Unreachable } from "../../server/RouteSocket";
import type { Answerer } from "../../server/Server";
import type { BoardAnswer } from "../../server/tolerantValues";

/** A board with high voltage, as one of its blocks gives access to it. */
export interface Board {
  name: string;
  path: string;
}

/** The boards of high-voltage blocks, each once: blocks of one board have one path. */
export function boardsOf(blocks: readonly Block[]): Board[] {
  const paths = new Set(blocks.map((block) => block.path));
  return [...paths].map((path) => ({ name: path.replace(/^Hardware\//, ""), path }));
}

export interface BoardReading {
  board: Board;
  answer: BoardAnswer | null;
  /** Why there is no answer; null also before the first. */
  fault: string | null;
}

/** The values of all boards; the fault of one doesn't hide the others. Fails when the server can't be reached. */
export function readBoards(server: Answerer, boards: readonly Board[]): Promise<BoardReading[]> {
  return Promise.all(
    boards.map(async (board) => {
      try {
        return { board, answer: await getBoardValues(server, board.path, "all"), fault: null };
      } catch (error) {
        if (error instanceof Unreachable) {
          throw error;
        }
        return { board, answer: null, fault: faultOf(error) };
      }
    }),
  );
}
