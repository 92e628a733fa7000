import { describe, expect, it } from "vitest";
import { curveColour, inkColour } from "../../src/charts/curves";
import { contrast, distance, type Vision, visions } from "./colourVision";

// The grounds of the page and of its panels.
const grounds = { light: ["#f6f7f9", "#ffffff"], dark: ["#101418", "#181d23"] };
const kinds = Object.keys(visions) as Vision[];

describe("the measures themselves", () => {
  it("tell black from white, and red from green but to the colour-blind", () => {
    expect(contrast("#000000", "#ffffff")).toBeCloseTo(21, 3);
    expect(distance("#000000", "#ffffff", "usual")).toBeCloseTo(100, 1);
    expect(distance("#aa0000", "#556600", "usual")).toBeGreaterThan(70);
    expect(distance("#aa0000", "#556600", "deutan")).toBeLessThan(30);
  });
});

describe.each([["light", false], ["dark", true]] as const)("on the %s ground", (name, isDark) => {
  const colours = Array.from({ length: 8 }, (_, i) => curveColour(i, isDark));
  const all = [...colours, inkColour(isDark)];
  const pairs = all.flatMap((a, i) => all.slice(i + 1).map((b) => [a, b] as const));

  it("every curve and the fit stand out", () => {
    const contrasts = all.flatMap((colour) => grounds[name].map((ground) => contrast(colour, ground)));
    expect(Math.min(...contrasts)).toBeGreaterThanOrEqual(3);
  });

  it.each(kinds)("a curve and the next one look apart to %s vision", (vision) => {
    const apart = colours.map((colour, i) => distance(colour, colours[(i + 1) % 8]!, vision));
    expect(Math.min(...apart)).toBeGreaterThan(30);
  });

  it.each(kinds)("any two of the curves and the fit look apart to %s vision", (vision) => {
    expect(Math.min(...pairs.map(([a, b]) => distance(a, b, vision)))).toBeGreaterThan(20);
  });
});
