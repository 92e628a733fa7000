import { parameter, setParameter } from "../../app/route";
import type { Block } from "../../model/blocks";
import { BlockChooser, chosenBlock, NoBlock } from "../common/BlockChooser";
import { Choice } from "../common/Choice";
import { useKeys } from "../common/useKeys";
import { PositionMap } from "./PositionMap";
import { PositionScatter } from "./PositionScatter";

type Source = "heatmap" | "scatter";
const options = [["heatmap", "Heat map"], ["scatter", "Scatter"]] as const;

/** Strips and shares of energy: the columns and rows of a map, or points. */
export function PositionView(): preact.JSX.Element {
  const block = chosenBlock("position");
  if (block === null) {
    return <NoBlock type="position" example='with "positions", "correlated_channels" and "y_positions"' />;
  }
  return <OnePosition block={block} />;
}

function OnePosition({ block }: { block: Block }): preact.JSX.Element {
  const source: Source = parameter("show") === "scatter" ? "scatter" : "heatmap";
  const choose = (next: Source): void => setParameter("show", next === "heatmap" ? null : next);
  useKeys({ m: () => choose(source === "heatmap" ? "scatter" : "heatmap") });
  const choices = (
    <>
      <BlockChooser chosen={block} forget={["at"]} />
      <Choice label="Show" chosen={source} options={options} onChoose={choose} shortcut="m" />
    </>
  );
  const Shown = source === "heatmap" ? PositionMap : PositionScatter;
  return <Shown key={`${source} ${block.path}`} block={block} choices={choices} />;
}
