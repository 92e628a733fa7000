import { useEffect } from "preact/hooks";
import { setParameter } from "../../app/route";
import { server } from "../../app/state";
import { usePolled } from "../../app/usePolled";
import type { Block } from "../../model/blocks";
import { getHistograms } from "../../server/queries";
import { allChannels, busiest, canAskAll, selectionText } from "./selection";

const intervalMs = 2_000;
const mostCounts = 1_000_000;

/** Until the operator chooses, the block's busiest channel is shown, as soon as there is one. */
export function useFirstChannel(block: Block | undefined, blocks: readonly Block[]): void {
  const ask =
    block !== undefined && canAskAll(block, mostCounts)
      ? async () => busiest(await getHistograms(server, block.path, allChannels(block)), 1)
      : null;
  const { value } = usePolled(ask, intervalMs, [block?.path ?? ""]);
  useEffect(() => {
    if (block !== undefined && value !== null && value.length > 0) {
      setParameter("show", selectionText([{ block, channels: value }], blocks));
    }
  }, [value]);
}
