import { useEffect } from "preact/hooks";
import { setParameter } from "../../app/route";
import type { Block } from "../../model/blocks";
import { useBusiest } from "./busiest";
import { selectionText } from "./selection";

/** Until the operator chooses, the block's busiest channel is shown, as soon as it is known. */
export function useFirstChannel(block: Block | undefined, blocks: readonly Block[]): void {
  const busiest = useBusiest(block);
  useEffect(() => {
    if (block !== undefined && busiest?.isSettled) {
      setParameter("show", selectionText([{ block, channels: [busiest.channel] }], blocks));
    }
  }, [busiest]);
}
