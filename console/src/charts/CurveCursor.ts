import type uPlot from "uplot";

/** The cursor of a plot: it follows the mouse, or stays where keys put it until the mouse takes it. */
export class CurveCursor {
  private at: number | null = null;
  private held: number | null = null;

  constructor(private readonly tell: (x: number | null) => void) {}

  /** The position under it; null where it isn't shown. */
  position(): number | null {
    return this.at;
  }

  hold(plot: uPlot, x: number): void {
    this.held = x;
    this.moveTo(x);
    this.show(plot);
  }

  /** To be called when the plot was drawn: a held cursor stays at its position, whatever is looked at. */
  show(plot: uPlot): void {
    if (this.held !== null) {
      plot.setCursor({ left: 0, top: 0 });
    }
  }

  /** Where the plot draws it when the mouse is here, in pixels; less than nothing beyond the edges. */
  readonly place = (plot: uPlot, mouseLeft: number, mouseTop: number): [number, number] => {
    if (this.held === null) {
      return [mouseLeft, mouseTop];
    }
    const left = plot.valToPos(this.held, "x");
    return [left > plot.over.clientWidth ? -1 : left, 0];
  };

  /** The plot drew it anew. */
  readonly onDrawn = (plot: uPlot): void => {
    const left = plot.cursor.left ?? -1;
    if (this.held === null) {
      this.moveTo(left < 0 ? null : plot.posToVal(left, "x"));
    }
  };

  // Browsers tell of moves of a mouse that rests, too, when the page moves under it.
  readonly onMouse = ({ movementX, movementY }: MouseEvent): void => {
    if (movementX !== 0 || movementY !== 0) {
      this.held = null;
    }
  };

  private moveTo(x: number | null): void {
    this.at = x;
    this.tell(x);
  }
}
