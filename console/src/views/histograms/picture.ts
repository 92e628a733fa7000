import { type CurveColour, curveColour } from "../../charts/curves";

/** A name beside a piece of its curve. */
export interface LegendEntry {
  label: string;
  colour: CurveColour;
  isDashed: boolean;
}

const lineHeight = 20;
const margin = 12;

/** The chart with its title, the names of its curves and the time, as a PNG. */
export function pictureOf(
  chart: HTMLCanvasElement,
  title: string,
  legend: readonly LegendEntry[],
  isDark: boolean,
): Promise<Blob> {
  const scale = chart.width / Math.max(1, chart.clientWidth);
  const top = margin + lineHeight * (1 + legend.length);
  const canvas = document.createElement("canvas");
  canvas.width = chart.width;
  canvas.height = chart.height + Math.ceil(top * scale);
  const context = canvas.getContext("2d")!;
  context.fillStyle = isDark ? "#181d23" : "#ffffff";
  context.fillRect(0, 0, canvas.width, canvas.height);
  context.drawImage(chart, 0, canvas.height - chart.height);
  context.scale(scale, scale);
  drawHead(context, title, legend, isDark);
  return new Promise((done, fail) => {
    const tooLarge = new Error("The browser makes no picture of this size.");
    canvas.toBlob((blob) => (blob === null ? fail(tooLarge) : done(blob)), "image/png");
  });
}

type Context = CanvasRenderingContext2D;

function drawHead(context: Context, title: string, legend: readonly LegendEntry[], isDark: boolean): void {
  const ink = isDark ? "#e4e8ed" : "#1c2128";
  context.textBaseline = "middle";
  context.fillStyle = ink;
  context.font = "bold 15px system-ui, sans-serif";
  context.fillText(title, margin, margin + lineHeight / 2);
  context.font = "13px system-ui, sans-serif";
  legend.forEach(({ label, colour, isDashed }, row) => {
    const y = margin + lineHeight * (row + 1.5);
    context.strokeStyle = curveColour(colour, isDark);
    context.lineWidth = 2;
    context.setLineDash(isDashed ? [6, 4] : []);
    context.beginPath();
    context.moveTo(margin, y);
    context.lineTo(margin + 24, y);
    context.stroke();
    context.fillText(label, margin + 32, y);
  });
}
