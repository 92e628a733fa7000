import { useState } from "preact/hooks";
import { timeOfDay } from "../../base/format";
import { server } from "../../app/state";
import { switchBoard } from "../../server/hv";
import { sendRunCommand } from "../../server/runControl";
import { type Action, useAction } from "../common/useAction";
import { type Order, reportOf } from "./order";

export interface Switching {
  action: Action;
  /** Asked for, not yet confirmed. */
  pending: Order | null;
  propose: (order: Order | null) => void;
  confirm: () => void;
  /** What was done last, for the operator. */
  done: string | null;
}

export function useSwitching(): Switching {
  const action = useAction();
  const [pending, propose] = useState<Order | null>(null);
  const [done, setDone] = useState<string | null>(null);
  const confirm = (): void => {
    const order = pending;
    propose(null);
    setDone(null);
    if (order !== null) {
      action.run(async () => {
        await carryOut(order);
        setDone(reportOf(order, timeOfDay(Date.now())));
      });
    }
  };
  return { action, pending, propose, confirm, done };
}

async function carryOut(order: Order): Promise<void> {
  if (order.isForAll) {
    return sendRunCommand(server, order.on ? "hv_on" : "hv_off");
  }
  await Promise.all(order.boards.map((board) => switchBoard(server, board.path, order.on)));
}
