import { type Answers, chainAnswers } from "./fakeServer";

const none = { status: 0, event_rate: 0, id: "", stored_events: 0, running_time: 0, used_space: 0 };
const noCounts = { status: 0, recorded: 0, failed: 0, dropped: 0, overwritten: 0 };

/** A server with two dumpers and an oscilloscope that keeps runs, and notes what is ordered. */
export class FakeRun {
  readonly dumpers = [{ name: "dumper0", ...none }, { name: "dumper1", ...none }];
  readonly counts = new Map([
    ["dumper0", { ...noCounts }],
    ["dumper1", { ...noCounts }],
    ["scope0", { ...noCounts }],
  ]);
  readonly ordered: string[] = [];

  /** Has all dumpers tell this of their run. */
  tell(run: Partial<typeof none>): void {
    this.dumpers.forEach((dumper) => Object.assign(dumper, run));
  }

  readonly answers: Answers = (query, route) => {
    switch (query.cmd) {
      case "get_run_info":
        return `[${this.dumpers.map(runInfo).join()}]`;
      case "get_dump_counts":
        return JSON.stringify([{ response: true, ...this.counts.get(route) }]);
      case "start_dump":
        this.tell({ status: 1, id: (query as { run_id?: string }).run_id ?? "" });
        return this.noted("start_dump");
      case "stop_dump":
        this.tell({ status: 0 });
        return this.noted("stop_dump");
      case "reset":
        return this.noted("reset");
      default:
        return chain(query, route);
    }
  };

  private noted(cmd: string): string {
    this.ordered.push(cmd);
    return '[{"response": true}]';
  }
}

const chain = chainAnswers(
  [
    { type: "source", name: "source0", shape: { board: "BOARD0" } },
    { type: "dumper", name: "dumper0", from: "source0" },
    { type: "dumper", name: "dumper1", from: "source0" },
    { type: "oscilloscope", name: "scope0", from: "source0" },
  ],
  () => 1_000,
);

/** The id stands there without quotes, as the server gives it. */
function runInfo({ id, ...rest }: { id: string; name: string } & typeof none): string {
  const { status, name, event_rate, stored_events, running_time, used_space } = rest;
  return (
    `{"status":${status},"name": "${name}","event_rate":${event_rate},"id":${id},` +
    `"stored_events":${stored_events},"running_time":${running_time},"used_space":${used_space}}`
  );
}
