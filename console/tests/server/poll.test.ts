import { afterEach, beforeEach, describe, expect, it, vi } from "vitest";
import { faultOf, poll, type Reading } from "../../src/server/poll";
import { Unreachable } from "../../src/server/RouteSocket";
import { wake } from "../../src/server/wake";

let asked: { answer: (value: string) => void; fail: (error: Error) => void }[];
let told: Reading<string>[];
let isHidden: boolean;
const ask = (): Promise<string> => new Promise((answer, fail) => asked.push({ answer, fail }));
let stops: (() => void)[];
const begin = (): (() => void) => {
  stops.push(poll(ask, { intervalMs: 200, hidden: () => isHidden }, (reading) => told.push(reading)));
  return stops.at(-1)!;
};
const settle = (): Promise<unknown> => vi.advanceTimersByTimeAsync(0);

beforeEach(() => {
  vi.useFakeTimers();
  vi.setSystemTime(1_000_000);
  [asked, told, stops, isHidden] = [[], [], [], false];
});
afterEach(() => {
  stops.forEach((stop) => stop());
  vi.useRealTimers();
});

describe("Polling", () => {
  it("asks at once and then from question to question", async () => {
    const began = performance.now();
    begin();
    expect(asked).toHaveLength(1);
    await vi.advanceTimersByTimeAsync(50);
    asked[0]!.answer("a");
    await settle();
    expect(told).toEqual([{ value: "a", at: 1_000_050, heardAt: began + 50, fault: null }]);
    await vi.advanceTimersByTimeAsync(149);
    expect(asked).toHaveLength(1);
    await vi.advanceTimersByTimeAsync(1);
    expect(asked).toHaveLength(2);
  });

  it("never asks before the question before is answered", async () => {
    begin();
    await vi.advanceTimersByTimeAsync(60_000);
    expect(asked).toHaveLength(1);
    asked[0]!.answer("late");
    await settle();
    expect(asked).toHaveLength(2);
  });

  it("keeps the last good reading with its time beside a fault, and goes on after a second", async () => {
    begin();
    asked[0]!.answer("a");
    await vi.advanceTimersByTimeAsync(200);
    asked[1]!.fail(new Unreachable("no connection"));
    await settle();
    const fault = "The server can't be reached: no connection.";
    expect(told.at(-1)).toMatchObject({ value: "a", at: 1_000_000, fault });
    await vi.advanceTimersByTimeAsync(999);
    expect(asked).toHaveLength(2);
    await vi.advanceTimersByTimeAsync(1);
    asked[2]!.answer("b");
    await settle();
    expect(told.at(-1)).toMatchObject({ value: "b", at: 1_001_200, fault: null });
  });

  it("asks only every ten seconds while nobody looks", async () => {
    isHidden = true;
    begin();
    asked[0]!.answer("a");
    await vi.advanceTimersByTimeAsync(9_999);
    expect(asked).toHaveLength(1);
    await vi.advanceTimersByTimeAsync(1);
    expect(asked).toHaveLength(2);
  });

  it("asks at once when it is woken, and still never twice at a time", async () => {
    begin();
    wake();
    expect(asked).toHaveLength(1);
    asked[0]!.fail(new Unreachable("no connection"));
    await settle();
    wake();
    expect(asked).toHaveLength(2);
    asked[1]!.answer("a");
    await settle();
    wake();
    expect(asked).toHaveLength(3);
    await vi.advanceTimersByTimeAsync(60_000);
    expect(asked).toHaveLength(3);
  });

  it("sleeps on while nobody looks", async () => {
    begin();
    isHidden = true;
    asked[0]!.answer("a");
    await settle();
    wake();
    expect(asked).toHaveLength(1);
  });

  it("doesn't wake once it is stopped", async () => {
    const stop = begin();
    asked[0]!.answer("a");
    await settle();
    stop();
    wake();
    expect(asked).toHaveLength(1);
  });

  it("measures ages by a clock that nobody sets", async () => {
    begin();
    await vi.advanceTimersByTimeAsync(50);
    vi.setSystemTime(5_000);
    const heardAt = performance.now();
    asked[0]!.answer("a");
    await settle();
    expect(told.at(-1)).toMatchObject({ at: 5_000, heardAt });
    await vi.advanceTimersByTimeAsync(150);
    expect(asked).toHaveLength(2);
  });

  it("asks and tells nothing once it is stopped", async () => {
    const stop = begin();
    stop();
    asked[0]!.answer("a");
    await vi.advanceTimersByTimeAsync(60_000);
    expect(asked).toHaveLength(1);
    expect(told).toEqual([]);
  });

  it("stops also between two questions", async () => {
    const stop = begin();
    asked[0]!.answer("a");
    await settle();
    stop();
    await vi.advanceTimersByTimeAsync(60_000);
    expect(asked).toHaveLength(1);
  });
});

describe("A fault", () => {
  it("is what an error says, whatever was thrown", () => {
    expect(faultOf(new Error("x"))).toBe("x");
    expect(faultOf("y")).toBe("y");
    expect(faultOf(undefined)).toBe("undefined");
  });
});
