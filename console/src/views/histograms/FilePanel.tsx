import { useRef } from "preact/hooks";
import type { Calibration } from "../../analysis/calibration";
import { tableText } from "../../analysis/csv";
import { isDark } from "../../base/theme";
import { download, fileName } from "../common/download";
import { useAction } from "../common/useAction";
import { useKeys } from "../common/useKeys";
import { type Copy, copiesFromFile } from "./copies";
import { binsOf, fitColour, onAxis, type ShownCurve } from "./display";
import { type LegendEntry, pictureOf } from "./picture";
import { Tool } from "./Tool";

interface Props {
  title: string;
  curves: readonly ShownCurve[];
  fitText: string | null;
  axis: Calibration;
  /** Where the chart is. */
  place: () => HTMLElement | null;
  canCopy: boolean;
  onCopy: () => void;
  onLoad: (copies: Copy[]) => void;
}

/** Keeps what is shown: to compare with, as a table, as a picture. */
export function FilePanel(props: Props): preact.JSX.Element {
  const action = useAction();
  const keep = (): void => action.run(async () => props.onCopy());
  useKeys({ k: keep });
  const isEmpty = props.curves.length === 0;
  return (
    <section class="panel stack" aria-label="Keep and compare">
      <h2>Keep and compare</h2>
      <div class="row">
        <Tool name="keep" title="Key k" isDisabled={!props.canCopy} onPress={keep}>Keep a copy</Tool>
        <FileButton onFile={(file) => action.run(async () => props.onLoad(await copiesFromFile(file)))} />
        <Tool name="csv" isDisabled={isEmpty} onPress={() => action.run(() => saveTable(props))}>Save CSV</Tool>
        <Tool name="png" isDisabled={isEmpty} onPress={() => action.run(() => savePicture(props))}>Save PNG</Tool>
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

async function saveTable({ title, curves, axis }: Props): Promise<void> {
  const columns = curves.map((curve) => ({ label: curve.label, counts: onAxis(curve, axis, binsOf(curves)) }));
  download(fileName(title, "csv"), new Blob([tableText({ calibration: axis, columns })], { type: "text/csv" }));
}

async function savePicture({ title, curves, fitText, place }: Props): Promise<void> {
  const chart = place()?.querySelector("canvas");
  if (!chart) {
    throw new Error("No curve is shown that could be saved.");
  }
  const head = `${title}, ${new Date().toLocaleString()}`;
  download(fileName(title, "png"), await pictureOf(chart, head, legendOf(curves, fitText), isDark.value));
}

function legendOf(curves: readonly ShownCurve[], fitText: string | null): LegendEntry[] {
  const entries: LegendEntry[] = curves.map(({ label, isCopy }, colour) => ({ label, colour, isDashed: isCopy }));
  return fitText === null ? entries : [...entries, { label: fitText, colour: fitColour, isDashed: true }];
}
