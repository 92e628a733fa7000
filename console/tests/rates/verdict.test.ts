import { expect, it } from "vitest";
import type { Judgement } from "../../src/views/rates/judgement";
import type { RateRow } from "../../src/views/rates/rateRows";
import { verdictOf } from "../../src/views/rates/verdict";

const row = (channel: number, judgement: Judgement = "", rate = 10): RateRow =>
  ({ channel, name: `ch ${channel}`, in: rate, out: rate, judgement });

it("calls channels well only by the rates of now", () => {
  const rows = [row(0), row(1)];
  expect(verdictOf(rows, true)).toEqual({ text: "No dead, blocked or noisy channel.", tone: "good" });
  const then = { text: "By the last rates: No dead, blocked or noisy channel.", tone: "faint" };
  expect(verdictOf(rows, false)).toEqual(then);
});

it("names the channels that stand out, and alarms only by the rates of now", () => {
  const rows = [row(0, "dead", 0), row(1), row(2, "noisy"), row(3, "dead", 0)];
  const text = "2 dead: ch 0, ch 3; 1 noisy: ch 2";
  expect(verdictOf(rows, true)).toEqual({ text, tone: "alarm" });
  expect(verdictOf(rows, false)).toEqual({ text: `By the last rates: ${text}`, tone: "warn" });
});

it("names eight of a kind at most", () => {
  const rows = [...Array.from({ length: 9 }, (_, i) => row(i, "dead", 0)), row(9)];
  const names = "ch 0, ch 1, ch 2, ch 3, ch 4, ch 5, ch 6, ch 7";
  expect(verdictOf(rows, true).text).toBe(`9 dead: ${names}, …`);
});

it("alarms when no channel counts", () => {
  expect(verdictOf([row(0, "", 0), row(1, "", NaN)], true)).toEqual({ text: "No channel counts.", tone: "alarm" });
});
