import "./heat.css";
import { useLayoutEffect, useRef, useState } from "preact/hooks";
import { isTyping } from "../../base/typing";
import { isDark } from "../../base/theme";
import { type Cell, type HeatWindow, isWithin } from "./heatArea";
import type { HeatPicture } from "./heatPicture";
import { HeatPlot } from "./HeatPlot";

export interface HeatChartProps {
  picture: HeatPicture;
  onWindow: (window: HeatWindow) => void;
  /** What is said of the cell under the cursor. */
  readOut: (cell: Cell) => string;
  /** For those who can't see the picture. */
  description: string;
  /** Gets the canvas, to save it. */
  onCanvas: (canvas: HTMLCanvasElement) => void;
}

const help = "Arrow keys move a cursor, with Shift the map; + and − zoom, Home shows all.";

/** A heat map or points, with cursor, zoom and pan by mouse, fingers and keys. */
export function HeatChart(props: HeatChartProps): preact.JSX.Element {
  const place = useRef<HTMLDivElement>(null);
  const plot = useRef<HeatPlot | null>(null);
  const latest = useRef(props);
  latest.current = props;
  const [chosen, setCell] = useState<Cell | null>(null);
  const { picture } = props;
  const cell = chosen !== null && isWithin(chosen, picture.map) ? chosen : null;
  const dark = isDark.value;

  useLayoutEffect(() => {
    const made = new HeatPlot(place.current!, {
      onWindow: (window) => latest.current.onWindow(window),
      onCell: setCell,
    });
    plot.current = made;
    latest.current.onCanvas(made.canvas);
    return () => made.destroy();
  }, []);
  useLayoutEffect(() => plot.current!.show(picture, dark), [picture, dark]);
  useLayoutEffect(() => plot.current!.point(cell), [cell?.row, cell?.column]);

  const onKey = (event: KeyboardEvent): void => {
    const made = plot.current!;
    if (isTyping(event)) {
      return;
    }
    if (onCursorKey(event, cell, picture, made, setCell) || onLookKey(event, cell, made)) {
      event.preventDefault();
    }
  };
  const { description } = props;
  return (
    <div class="chart heat" tabIndex={0} role="img" aria-label={description} onKeyDown={onKey} data-test="map">
      <div class="plot" ref={place} />
      <p class="readout" aria-live="polite" data-test="readout">
        {cell === null ? help : props.readOut(cell)}
      </p>
    </div>
  );
}

/** Right and down as the picture has it. */
type Arrow = readonly [right: number, down: number];
const arrows: Record<string, Arrow> = {
  ArrowLeft: [-1, 0],
  ArrowRight: [1, 0],
  ArrowUp: [0, -1],
  ArrowDown: [0, 1],
};

/** Whether the key moved the cursor. */
function onCursorKey(
  event: KeyboardEvent,
  cell: Cell | null,
  picture: HeatPicture,
  plot: HeatPlot,
  setCell: (cell: Cell | null) => void,
): boolean {
  const arrow = arrows[event.key];
  if (arrow === undefined || event.shiftKey) {
    return false;
  }
  const next = nextCell(cell, arrow, picture);
  setCell(next);
  plot.reveal(next);
  return true;
}

/** Whether the key changed what is looked at. */
function onLookKey(event: KeyboardEvent, cell: Cell | null, plot: HeatPlot): boolean {
  const arrow = arrows[event.key];
  if (arrow !== undefined) {
    plot.move(arrow[0] * 0.1, arrow[1] * 0.1);
  } else if (event.key === "+" || event.key === "=" || event.key === "-") {
    plot.zoom(event.key === "-" ? 1 / 0.7 : 0.7, cell);
  } else if (event.key === "Home") {
    plot.whole();
  } else {
    return false;
  }
  return true;
}

/** Where the cursor goes; it begins in the middle. */
function nextCell(cell: Cell | null, arrow: Arrow, { map, shown, isUpward }: HeatPicture): Cell {
  if (cell === null) {
    const middle = ([from, to]: readonly [number, number]): number => Math.floor((from + to) / 2);
    return { row: middle(shown.y), column: middle(shown.x) };
  }
  const [right, down] = arrow;
  const within = (at: number, size: number): number => Math.min(size - 1, Math.max(0, at));
  return {
    row: within(cell.row + (isUpward ? -down : down), map.rows),
    column: within(cell.column + right, map.columns),
  };
}
