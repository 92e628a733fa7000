import { expect, test } from "vitest";
import { colourTables, rgbOf, tableSize } from "../../src/charts/colourTables";

// CIE L*, from the luminance of sRGB as IEC 61966-2-1 has it.
function lightness(css: string): number {
  const [red, green, blue] = css.match(/\d+/g)!.map((text) => {
    const value = Number(text) / 255;
    return value <= 0.04045 ? value / 12.92 : ((value + 0.055) / 1.055) ** 2.4;
  });
  const luminance = 0.2126 * red! + 0.7152 * green! + 0.0722 * blue!;
  return luminance > 216 / 24389 ? 116 * Math.cbrt(luminance) - 16 : (luminance * 24389) / 27;
}

test("known colours of CIELAB are those of sRGB", () => {
  expect(rgbOf([100, 0, 0])).toEqual([255, 255, 255]);
  expect(rgbOf([0, 0, 0])).toEqual([0, 0, 0]);
  expect(rgbOf([50, 0, 0])).toEqual([119, 119, 119]);
  expect(rgbOf([53.24, 80.09, 67.2])).toEqual([255, 0, 0]);
  expect(rgbOf([87.74, -86.18, 83.18])).toEqual([0, 255, 0]);
  expect(rgbOf([32.3, 79.19, -107.86])).toEqual([0, 0, 255]);
});

test("what a screen can't show is cut to what it can", () => {
  expect(rgbOf([60, 200, 200])[0]).toBe(255);
  expect(rgbOf([60, 200, 200])[2]).toBe(0);
});

test("there are a few tables with names of their own, one of them grey", () => {
  expect(new Set(colourTables.map(({ name }) => name)).size).toBe(colourTables.length);
  const grey = colourTables.find(({ name }) => name === "grey")!;
  for (const css of grey.css) {
    const [red, green, blue] = css.match(/\d+/g)!.map(Number);
    expect(Math.max(red!, green!, blue!) - Math.min(red!, green!, blue!)).toBeLessThanOrEqual(1);
  }
});

test.each(colourTables)("the lightness of $name rises always, and by nearly even steps", ({ css }) => {
  expect(css).toHaveLength(tableSize);
  const levels = css.map(lightness);
  const even = (levels.at(-1)! - levels[0]!) / (tableSize - 1);
  // Colours are whole numbers, which moves each by up to about 0.2: over 15 of them that hardly counts.
  for (let i = 15; i < tableSize; ++i) {
    const step = (levels[i]! - levels[i - 15]!) / (15 * even);
    expect(step).toBeGreaterThan(0.9);
    expect(step).toBeLessThan(1.1);
  }
  for (let i = 2; i < tableSize; ++i) {
    expect(levels[i]).toBeGreaterThan(levels[i - 2]!);
  }
  expect(levels.at(-1)! - levels[0]!).toBeGreaterThan(65);
});

test.each(colourTables)("the pixels of $name are its colours, opaque, red first", ({ css, pixels }) => {
  const bytes = new Uint8Array(pixels.buffer);
  css.forEach((text, i) => {
    expect([...bytes.slice(4 * i, 4 * i + 4)]).toEqual([...text.match(/\d+/g)!.map(Number), 255]);
  });
});

type Rgb = readonly [number, number, number];
type Matrix = readonly [Rgb, Rgb, Rgb];

// What those see who lack a kind of cone, in linear sRGB: Viénot, Brettel and Mollon (1999), for the primaries of
// sRGB. Greys stay as they are.
const seen: Record<string, Matrix> = {
  "all colours": [[1, 0, 0], [0, 1, 0], [0, 0, 1]],
  "no long waves (protan)": [[0.11238, 0.88762, 0], [0.11238, 0.88762, 0], [0.00401, -0.00401, 1]],
  "no middle waves (deutan)": [[0.29275, 0.70725, 0], [0.29275, 0.70725, 0], [-0.02234, 0.02234, 1]],
};

const toXyz: Matrix = [
  [0.4124564, 0.3575761, 0.1804375],
  [0.2126729, 0.7151522, 0.072175],
  [0.0193339, 0.119192, 0.9503041],
];
const whitePoint: Rgb = [0.95047, 1, 1.08883];

const times = (matrix: Matrix, [a, b, c]: Rgb): Rgb => {
  const row = (i: 0 | 1 | 2): number => matrix[i][0] * a + matrix[i][1] * b + matrix[i][2] * c;
  return [row(0), row(1), row(2)];
};

/** CIELAB of a colour as somebody sees it. */
function labOf(css: string, vision: Matrix): Rgb {
  const [red = 0, green = 0, blue = 0] = css.match(/\d+/g)!.map((text) => {
    const value = Number(text) / 255;
    return value <= 0.04045 ? value / 12.92 : ((value + 0.055) / 1.055) ** 2.4;
  });
  const xyz = times(toXyz, times(vision, [red, green, blue]));
  const [x = 0, y = 0, z = 0] = xyz.map((part, i) => {
    const share = Math.max(0, part) / whitePoint[i]!;
    return share > 216 / 24389 ? Math.cbrt(share) : (24389 / 27 * share + 16) / 116;
  });
  return [116 * y - 16, 500 * (x - y), 200 * (y - z)];
}

/** How different colours look that are so many apart (CIE 1976), along the table. */
function stepsOf(css: readonly string[], vision: Matrix, apart: number): { look: number; light: number }[] {
  const labs = css.map((colour) => labOf(colour, vision));
  return labs.slice(apart).map((lab, i) => {
    const before = labs[i]!;
    return { look: Math.hypot(...lab.map((part, k) => part - before[k]!)), light: lab[0] - before[0] };
  });
}

const visions = Object.entries(seen).flatMap(([who, vision]) =>
  colourTables.map((table) => ({ who, vision, name: table.name, css: table.css })),
);

// The table that is shown at first, and grey, are even; the many colours of the other have their price.
test.each(visions)("$name gets lighter by like steps for eyes that see $who", ({ name, css, vision }) => {
  // Sixteen apart, as whole numbers of colours move single steps.
  const steps = stepsOf(css, vision, 16);
  expect(Math.min(...steps.map(({ light }) => light))).toBeGreaterThan(2);
  const looks = steps.map(({ look }) => look);
  expect(Math.max(...looks) / Math.min(...looks)).toBeLessThan(name === "ember" ? 3 : 1.6);
});

test("those who lack a kind of cone see greys as they are", () => {
  for (const vision of Object.values(seen)) {
    const [lightness, a, b] = labOf("rgb(119 119 119)", vision);
    expect(lightness).toBeCloseTo(50, 0);
    expect(Math.hypot(a, b)).toBeLessThan(0.1);
  }
});
