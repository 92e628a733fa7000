import { useRef } from "preact/hooks";
import { whole } from "../../base/format";
import { isAway } from "../../app/reach";
import { server } from "../../app/state";
import { usePolled } from "../../app/usePolled";
import type { Block } from "../../model/blocks";
import { type DumpCounts, getDumpCounts } from "../../server/dumpCounts";
import { Freshness } from "../common/Freshness";

const intervalMs = 2_000;
const nowMs = 10_000;

/** What all recorders lost of this run, or of the last one; in red while it becomes more. */
export function RunLosses(props: { blocks: readonly Block[]; isOver: boolean }): preact.JSX.Element {
  const { blocks, isOver } = props;
  const ask = (): Promise<DumpCounts[]> => Promise.all(blocks.map((block) => getDumpCounts(server, block)));
  const names = blocks.map(({ name }) => name).join("\n");
  const reading = usePolled(blocks.length === 0 ? null : ask, intervalMs, [names]);
  const texts = (reading.value ?? []).flatMap((counts, i) => lossText(blocks[i]?.name ?? "", counts));
  const lost = reading.value?.reduce((sum, counts) => sum + lostOf(counts), 0);
  const isRising = useRising(lost ?? null, reading.heardAt);
  const tone = texts.length === 0 ? "good" : isRising ? "alarm" : "warn";
  return (
    <>
      {reading.value !== null && (
        <p class={isAway.value ? "faint" : tone} data-test="run-losses">
          {`Lost in ${isOver ? "the last" : "this"} run: ${texts.join("; ") || "nothing"}.`}
        </p>
      )}
      {reading.fault !== null && !isAway.value && <Freshness reading={reading} intervalMs={intervalMs} />}
    </>
  );
}

function lostOf({ failed, dropped, overwritten }: DumpCounts): number {
  return failed + dropped + overwritten;
}

function lossText(name: string, { failed, dropped, overwritten }: DumpCounts): string[] {
  const parts = [
    [failed, "not written"],
    [dropped, "dropped at a full queue"],
    [overwritten, "written over"],
  ] as const;
  const said = parts.filter(([count]) => count > 0).map(([count, how]) => `${whole(count)} ${how}`);
  return said.length === 0 ? [] : [`${name} ${said.join(", ")}`];
}

/** Whether it became more a moment ago; `at` is when it was read. */
function useRising(lost: number | null, at: number): boolean {
  const known = useRef<{ lost: number; roseAt: number | null }>({ lost: Infinity, roseAt: null });
  if (lost !== null && lost !== known.current.lost) {
    known.current = { lost, roseAt: lost > known.current.lost ? at : null };
  }
  const { roseAt } = known.current;
  return roseAt !== null && at - roseAt < nowMs;
}
