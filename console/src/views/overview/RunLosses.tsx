import { useRef } from "preact/hooks";
import { whole } from "../../base/format";
import { isAway, isKnown } from "../../app/reach";
import type { DumpCounts } from "../../server/dumpCounts";
import type { Reading } from "../../server/poll";
import { Freshness } from "../common/Freshness";
import { type Recorded, recordersMs } from "./useRecorders";

const nowMs = 10_000;
const unwritten =
  " What isn't written has no room or no permission: the server's log says why. Stop the run before the next one.";

/** What all recorders lost of this run, or of the last one; in red while it becomes more. */
export function RunLosses(props: { reading: Reading<Recorded[]>; isOver: boolean }): preact.JSX.Element {
  const { reading, isOver } = props;
  const texts = (reading.value ?? []).flatMap(({ name, counts }) => lossText(name, counts));
  const lost = reading.value?.reduce((sum, { counts }) => sum + lostOf(counts), 0);
  const remedy = reading.value?.some(({ counts }) => counts.failed > 0) ? unwritten : "";
  const isRising = useRising(lost ?? null, reading.heardAt);
  const isNow = isKnown(reading) && !isAway.value;
  const tone = texts.length === 0 ? (isNow ? "good" : "faint") : isRising && isNow ? "alarm" : "warn";
  return (
    <>
      {reading.value !== null && (
        <p class={tone} data-test="run-losses">
          {`Lost in ${isOver ? "the last" : "this"} run: ${texts.join("; ") || "nothing"}.${remedy}`}
        </p>
      )}
      {reading.fault !== null && !isAway.value && <Freshness reading={reading} intervalMs={recordersMs} />}
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
