import { signal } from "@preact/signals";
import { type Block, getBlocks } from "../model/blocks";
import { type Flow, FlowTracker } from "../model/flow";
import { getLedger, type Ledger } from "../model/ledger";
import { noReading, poll, type Reading } from "../server/poll";
import { getRunInfo, type RunInfo } from "../server/runControl";
import { Server, serverBaseOf } from "../server/Server";
import { noteBroken } from "./broken";

// What all views share: the server, what the configuration made, and how the records move.

export const server = new Server(serverBaseOf(window.location));

export const blocks = signal<Reading<Block[]>>(noReading);
export const runs = signal<Reading<RunInfo[]>>(noReading);

export interface Account {
  ledger: Ledger;
  flows: Flow[];
}
export const account = signal<Reading<Account>>(noReading);

/** Date.now(), twice a second: for times of day. */
export const now = signal(Date.now());

/** performance.now(), twice a second: what shows an age depends on it. */
export const clock = signal(performance.now());

/** Begins to ask; returns what ends it. */
export function startState(): () => void {
  const tracker = new FlowTracker();
  const stops = [
    poll(() => getBlocks(server), { intervalMs: 10_000 }, (reading) => (blocks.value = reading)),
    poll(() => getRunInfo(server), { intervalMs: 1_000 }, (reading) => {
      noteBroken(reading);
      runs.value = reading;
    }),
    poll(
      async () => {
        const ledger = await getLedger(server);
        return { ledger, flows: tracker.add(ledger, performance.now()) };
      },
      { intervalMs: 1_000 },
      (reading) => (account.value = reading),
    ),
  ];
  const ticking = setInterval(() => {
    now.value = Date.now();
    clock.value = performance.now();
  }, 500);
  return () => {
    stops.forEach((stop) => stop());
    clearInterval(ticking);
  };
}
