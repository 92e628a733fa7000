import type { Page } from "playwright-core";
import { drawnTexts, fillOf, heightOfColour, recordTexts } from "./support/canvas";
import { chainAnswers, fakeServer } from "./support/fakeServer";
import { expect, test } from "./support/test";

const samples = 101;
const peakAt = 50;
const baseline = 1_000;

/** A baseline with one sample that stands out. */
const pulse = (peak: number): number[] =>
  Array.from({ length: samples }, (_, i) => (i === peakAt ? peak : baseline + (i % 2)));

/** A server with an oscilloscope whose first channel shows what the test says. */
class FakeScope {
  asked = 0;
  accountsAsked = 0;
  constructor(public trace: number[]) {}

  async serve(page: Page, channels = 1): Promise<void> {
    const shape = { channels, analog: 1, digital: 0, samples };
    const chain = chainAnswers([{ type: "oscilloscope", name: "scope0", shape }], () => 0);
    await fakeServer(page, (query, route) => {
      if (route !== "scope0") {
        this.accountsAsked += query.cmd === "get_ledger" ? 1 : 0;
        return chain(query, route);
      }
      this.asked += query.cmd === "require_data" ? 1 : 0;
      return query.cmd === "require_data" ? JSON.stringify([{ data: this.trace }]) : '{"response":true}';
    });
  }

  /** Shows this, and waits until the page has read it and drawn what it makes of it. */
  async show(trace: number[]): Promise<void> {
    this.trace = trace;
    const before = this.asked;
    await expect.poll(() => this.asked).toBeGreaterThan(before + 2);
  }
}

const placeholder = (page: Page, name: string): Promise<string | null> =>
  page.locator(`[data-test=trace-0] [data-test=${name}]`).getAttribute("placeholder");
const press = (page: Page, name: string): Promise<void> => page.locator(`[data-test=scope-${name}]`).click();

/** The value at the cursor, which stands at the peak. */
async function peakShown(page: Page): Promise<number> {
  return Number(await page.locator("[data-test=trace-0] [data-test=value]").innerText());
}

async function cursorToPeak(page: Page): Promise<void> {
  await page.locator("[data-test=scope-picture]").focus();
  await page.keyboard.press("ArrowRight"); // from the middle, which is the peak
  await page.keyboard.press("ArrowLeft");
  const cursor = page.locator("[data-test=scope-cursor]");
  await expect.poll(() => cursor.innerText()).toBe(`Cursor sample ${peakAt}`);
}

async function open(page: Page, url: string, scope: FakeScope, query = ""): Promise<void> {
  await scope.serve(page);
  await recordTexts(page);
  await page.goto(`${url}#/scope${query}`);
  await page.locator("[data-test=trace-0]").waitFor();
}

test("the first scale fits the first waveforms, and a level half way is proposed", async ({ site, page }) => {
  const scope = new FakeScope(Array<number>(samples).fill(0)); // as before the first waveform
  await open(page, site.url, scope);
  await page.locator("[data-test=scope-empty]").waitFor();
  await scope.show(pulse(2_400));
  // 1400 over 6 divisions is 233, so 500; the middle, 1700, goes to the nearest 500.
  await expect.poll(() => placeholder(page, "scale")).toBe("500");
  expect(await placeholder(page, "offset")).toBe("1500");
  const level = page.locator("[data-test=trigger-level]");
  expect(await level.inputValue()).toBe("1700");

  for (const peak of [2_300, 2_390, 2_200, 2_100]) {
    await scope.show(pulse(peak));
  }
  await expect.poll(() => level.inputValue()).toBe("1660"); // half way to 2300, the middle one, by twenties

  await scope.show(pulse(6_000));
  expect([await placeholder(page, "offset"), await placeholder(page, "scale")]).toEqual(["1500", "500"]);
  await expect.poll(() => drawnTexts(page)).toContainEqual(expect.objectContaining({ text: "▲ goes on, F fits" }));
  await page.getByRole("button", { name: "Fit", exact: true }).click();
  await expect.poll(() => placeholder(page, "scale")).toBe("1000");
  await expect.poll(() => level.inputValue()).toBe("3500");
  await expect.poll(async () => (await drawnTexts(page)).some(({ text }) => text.startsWith("▲"))).toBe(false);
});

test("a trigger holds what crosses its level, and nothing else", async ({ site, page }) => {
  const scope = new FakeScope(pulse(2_400));
  await open(page, site.url, scope);
  await cursorToPeak(page);
  await page.locator("[data-test=trigger-level]").fill("2000");
  await page.keyboard.press("Enter");
  await press(page, "triggered");
  await scope.show(pulse(1_900));
  expect(await peakShown(page)).toBe(2_400);
  await scope.show(pulse(2_100));
  await expect.poll(() => peakShown(page)).toBe(2_100);
  await scope.show(pulse(1_999));
  expect(await peakShown(page)).toBe(2_100);

  await page.locator("[data-test=trigger-edge]").selectOption("falling");
  await scope.show(Array.from(pulse(2_000), () => 2_500)); // above the level throughout
  expect(await peakShown(page)).toBe(2_100);
});

test("a number can be typed slowly while the traces go on", async ({ site, page }) => {
  const scope = new FakeScope(pulse(2_400));
  await open(page, site.url, scope);
  const typeSlowly = async (selector: string, text: string): Promise<void> => {
    await page.locator(selector).selectText();
    for (const [i, digit] of [...text].entries()) {
      await page.keyboard.press(digit);
      await scope.show(pulse(2_400 + i));
    }
    await page.keyboard.press("Enter");
    await scope.show(pulse(2_400));
    await expect.poll(() => page.locator(selector).inputValue()).toBe(text);
  };
  await typeSlowly("[data-test=trigger-level]", "1234");
  await typeSlowly("[data-test=trace-0] [data-test=offset]", "-12");
  await typeSlowly("[data-test=scope-ns]", "2.5");
});

test("a single shot takes the next waveform that triggers, and asks no more", async ({ site, page }) => {
  const scope = new FakeScope(pulse(3_000));
  await open(page, site.url, scope, "?trig=0,2000,rising");
  await cursorToPeak(page);
  await expect.poll(() => peakShown(page)).toBe(3_000);
  await press(page, "single");
  await scope.show(pulse(1_500));
  expect(await peakShown(page)).toBe(3_000);
  scope.trace = pulse(2_600);
  await expect.poll(() => peakShown(page)).toBe(2_600);
  await expect.poll(() => page.locator("[data-test=scope-held]").innerText()).toMatch(/^Frozen/);
});

test("what is frozen stays, whatever comes, until it runs again", async ({ site, page }) => {
  const scope = new FakeScope(pulse(2_400));
  await open(page, site.url, scope);
  await cursorToPeak(page);
  await press(page, "frozen");
  await expect.poll(() => page.locator("[data-test=scope-held]").innerText()).toMatch(/^Frozen/);
  const asked = scope.asked;
  scope.trace = pulse(5_000);
  const accounts = scope.accountsAsked;
  await expect.poll(() => scope.accountsAsked).toBeGreaterThan(accounts + 1); // the page is alive
  expect(await peakShown(page)).toBe(2_400);
  expect(scope.asked).toBeLessThanOrEqual(asked + 1);
  await page.locator("[data-test=scope-picture]").focus();
  await page.keyboard.press(" ");
  await expect.poll(() => peakShown(page)).toBe(5_000);
});

// Of the picture, in pixels.
const [left, right, top, bottom] = [56, 10, 8, 36];

test("offset and scale move the trace that is drawn, each as far as it says", async ({ site, page }) => {
  const scope = new FakeScope(pulse(baseline).fill(baseline));
  await open(page, site.url, scope, "?v=0:1000:100");
  const traceColour = await fillOf(page.locator("[data-test=trace-0] .swatch"));
  const canvas = page.locator("[data-test=scope-picture]");
  const height = (await canvas.boundingBox())!.height - top - bottom;
  const middle = top + height / 2;
  const traceAt = (): Promise<number> => heightOfColour(canvas, 400, traceColour);
  const isAt = (y: number) => expect.poll(async () => Math.abs((await traceAt()) - y)).toBeLessThan(1.5);
  await isAt(middle);
  const enter = async (name: string, text: string): Promise<void> => {
    await page.locator(`[data-test=trace-0] [data-test=${name}]`).fill(text);
    await page.keyboard.press("Enter");
  };
  await enter("offset", "800"); // two divisions of eight
  await isAt(middle - height / 4);
  await enter("scale", "200"); // 200 above the middle are one division now
  await isAt(middle - height / 8);
  await enter("offset", "1500");
  await isAt(middle + (2.5 * height) / 8);
});

test("the time axis is in nanoseconds when the length of a sample is known", async ({ site, page }) => {
  const scope = new FakeScope(pulse(2_400));
  await open(page, site.url, scope);
  const texts = async (): Promise<string[]> => (await drawnTexts(page)).map(({ text }) => text);
  await expect.poll(texts).toContain("samples");
  await page.locator("[data-test=scope-ns]").fill("8");
  await page.keyboard.press("Enter");
  await expect.poll(texts).toContain("time / ns");
  const { width, height } = (await page.locator("[data-test=scope-picture]").boundingBox())!;
  // 800 ns are all of the 101 samples, from the first to the last.
  for (const ns of [0, 400, 800]) {
    const x = left + (ns / 800) * (width - left - right);
    const tick = (await drawnTexts(page)).find(({ text, y }) => text === String(ns) && y > height - bottom);
    expect(Math.abs((tick?.x ?? NaN) - x)).toBeLessThan(0.5);
  }
  await page.locator("[data-test=scope-picture]").focus();
  await page.keyboard.press("ArrowRight");
  const cursor = page.locator("[data-test=scope-cursor]");
  await expect.poll(() => cursor.innerText()).toBe("Cursor sample 51, 408 ns");
});

for (const [width, height] of [[1440, 900], [820, 1180]] as const) {
  test(`all of 32 channels can be chosen without scrolling, ${width} pixels wide`, async ({ site, page }) => {
    await page.setViewportSize({ width, height });
    const scope = new FakeScope(pulse(2_400));
    await scope.serve(page, 32);
    await page.goto(`${site.url}#/scope`);
    const list = page.locator(".scope-channels");
    await list.waitFor();
    const boxes = await page.locator(".scope-channels label").evaluateAll((labels) =>
      labels.map((label) => {
        const place = label.getBoundingClientRect();
        const frame = label.parentElement!.getBoundingClientRect();
        return place.right <= frame.right + 1 && place.bottom <= frame.bottom + 1;
      }),
    );
    expect(boxes).toEqual(Array<boolean>(32).fill(true));
    const panel = await list.boundingBox();
    await page.locator("[data-test=scope-channel-31]").click();
    expect(panel!.y + (width > 1000 ? panel!.height : 0)).toBeLessThan(height);
    await expect.poll(() => page.url()).toMatch(/ch=0%2C31|ch=0,31/);
  });
}
