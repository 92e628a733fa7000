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
