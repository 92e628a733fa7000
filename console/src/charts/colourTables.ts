/** Colours from few to many, as CSS has them and as 32 bits of an ImageData (red in the lowest byte). */
export interface ColourTable {
  name: string;
  text: string;
  css: readonly string[];
  pixels: Uint32Array;
}

export const tableSize = 256;

/** A place in CIE 1976 L*a*b*: equal distances look alike. */
type Lab = readonly [lightness: number, a: number, b: number];

/** From the first to the last colour on a curve that the middle one draws to itself (a quadratic Bézier curve). */
interface Path {
  name: string;
  text: string;
  from: Lab;
  towards: Lab;
  to: Lab;
}

// The lightness rises evenly, since each middle one's lies half way. Blue to yellow is told apart by all kinds of
// colour vision; none begins so dark or ends so light that it could be taken for the ground.
const paths: readonly Path[] = [
  { name: "dawn", text: "Blue to yellow", from: [24, 9, -38], towards: [58.5, 0, 4], to: [93, -14, 70] },
  { name: "ember", text: "Violet, red, yellow", from: [24, 36, -36], towards: [58.5, 66, 36], to: [93, -14, 64] },
  { name: "grey", text: "Grey", from: [24, 0, 0], towards: [58.5, 0, 0], to: [93, 0, 0] },
];

// White of D65, and the primaries of sRGB (IEC 61966-2-1).
const white: Lab = [0.95047, 1, 1.08883];
const primaries: readonly Lab[] = [
  [3.2404542, -1.5371385, -0.4985314],
  [-0.969266, 1.8760108, 0.041556],
  [0.0556434, -0.2040259, 1.0572252],
];

export const colourTables: readonly ColourTable[] = paths.map(tableOf);

function tableOf(path: Path): ColourTable {
  const colours = Array.from({ length: tableSize }, (_, i) => rgbOf(on(path, i / (tableSize - 1))));
  return {
    name: path.name,
    text: path.text,
    css: colours.map(([red, green, blue]) => `rgb(${red} ${green} ${blue})`),
    pixels: Uint32Array.from(colours, ([red, green, blue]) => 0xff000000 + blue * 65536 + green * 256 + red),
  };
}

function on({ from, towards, to }: Path, t: number): Lab {
  const at = (i: 0 | 1 | 2): number => (1 - t) * (1 - t) * from[i] + 2 * t * (1 - t) * towards[i] + t * t * to[i];
  return [at(0), at(1), at(2)];
}

/** Red, green and blue from 0 to 255; what a screen can't show is cut. */
export function rgbOf([lightness, a, b]: Lab): [number, number, number] {
  const y = (lightness + 16) / 116;
  const amount = (f: number): number => (f > 6 / 29 ? f ** 3 : (f - 4 / 29) * (108 / 841));
  const light = [y + a / 500, y, y - b / 200].map((f, i) => white[i]! * amount(f));
  const component = (i: number): number => {
    const linear = primaries[i]!.reduce((sum, weight, j) => sum + weight * light[j]!, 0);
    const shown = linear <= 0.0031308 ? 12.92 * linear : 1.055 * linear ** (1 / 2.4) - 0.055;
    return Math.min(255, Math.max(0, Math.round(shown * 255)));
  };
  return [component(0), component(1), component(2)];
}
