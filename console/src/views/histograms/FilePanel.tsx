import { useRef } from "preact/hooks";
import type { Calibration } from "../../analysis/calibration";
import { loadPart } from "../../base/loadPart";
import { useAction } from "../common/useAction";
import { useKeys } from "../common/useKeys";
import type { Copy } from "./copies";
import type { ShownCurve } from "./display";
import { Tool } from "./Tool";

export interface FileProps {
  title: string;
  curves: readonly ShownCurve[];
  /** What the fit says; null when none is drawn. */
  fitText: string | null;
  axis: Calibration;
  /** Where the chart is. */
  place: () => HTMLElement | null;
}

interface Props extends FileProps {
  canCopy: boolean;
  onCopy: () => void;
  onLoad: (copies: Copy[]) => void;
}

// Few need them, so they are loaded when they are asked for.
const load = () => loadPart("What reads and writes files", () => import("./files"));
type Files = Awaited<ReturnType<typeof load>>;

/** Keeps what is shown: to compare with, as a table, as a picture. */
export function FilePanel(props: Props): preact.JSX.Element {
  const action = useAction();
  const keep = (): void => action.run(async () => props.onCopy());
  const run = (what: (files: Files) => void | Promise<void>): void =>
    action.run(async () => what(await load()));
  useKeys({ k: keep });
  const isEmpty = props.curves.length === 0;
  return (
    <section class="panel stack" aria-label="Keep and compare">
      <h2>Keep and compare</h2>
      <div class="row">
        <Tool name="keep" title="Key k" isDisabled={!props.canCopy} onPress={keep}>Keep a copy</Tool>
        <FileButton onFile={(file) => run(async (files) => props.onLoad(await files.copiesFromFile(file)))} />
        <Tool name="csv" isDisabled={isEmpty} onPress={() => run((files) => files.saveTable(props))}>
          Save CSV
        </Tool>
        <Tool name="png" isDisabled={isEmpty} onPress={() => run((files) => files.savePicture(props))}>
          Save PNG
        </Tool>
      </div>
      {action.fault !== null && <p class="alarm" role="alert" data-test="file-fault">{action.fault}</p>}
    </section>
  );
}

function FileButton({ onFile }: { onFile: (file: File) => void }): preact.JSX.Element {
  const input = useRef<HTMLInputElement>(null);
  const take = (): void => {
    const file = input.current!.files?.[0];
    input.current!.value = ""; // the same file may be chosen again
    if (file) {
      onFile(file);
    }
  };
  return (
    <>
      <Tool name="load" onPress={() => input.current!.click()}>Load a file</Tool>
      <input ref={input} type="file" accept=".csv,text/csv" hidden data-test="file" onChange={take} />
    </>
  );
}
