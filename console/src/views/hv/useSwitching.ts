import { useRef, useState } from "preact/hooks";
import { timeOfDay } from "../../base/format";
import { server } from "../../app/state";
import { switchBoard } from "../../server/hv";
import { faultOf } from "../../server/poll";
import { sendRunCommand } from "../../server/runControl";
import { type Action, useAction } from "../common/useAction";
import { failureOf, type Order, reportOf } from "./order";

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
  const last = useRef<Order | null>(null);
  const begin = async (order: Order): Promise<void> => {
    last.current = order;
    await carryOut(order);
    if (last.current === order) {
      setDone(reportOf(order, timeOfDay(Date.now())));
    }
  };
  const confirm = (): void => {
    const order = pending;
    propose(null);
    setDone(null);
    if (order !== null) {
      // "Off" waits for nothing: it may be what takes back the "on" that still runs.
      (order.on ? action.run : action.runNow)(() => begin(order));
    }
  };
  return { action, pending, propose, confirm, done };
}

async function carryOut(order: Order): Promise<void> {
  try {
    await (order.isForAll
      ? sendRunCommand(server, order.on ? "hv_on" : "hv_off")
      : Promise.all(order.boards.map((board) => switchBoard(server, board.path, order.on))));
  } catch (error) {
    throw new Error(failureOf(order, faultOf(error)));
  }
}
