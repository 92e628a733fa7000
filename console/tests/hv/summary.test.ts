import { describe, expect, it } from "vitest";
import type { BoardValue } from "../../src/server/tolerantValues";
import { counted, powerWords, rangeOf, summaryOf } from "../../src/views/hv/summary";

const list = (name: string, ...values: string[]): BoardValue => ({ name, isArray: true, values });
const single = (name: string, value: string): BoardValue => ({ name, isArray: false, values: [value] });

describe("a board's high voltage at a glance", () => {
  it("is that of its states and voltages", () => {
    const values = [list("HVSet", "800", "700"), list("HVState", "on", "on"), list("HVVoltage", "799.9", "700.1")];
    expect(summaryOf(values)).toEqual({ power: "on", text: "HVState 2 × on; HVVoltage 700.1 to 799.9" });
  });

  it.each([
    ["on", ["on", "ON", "enabled", "true"]],
    ["off", ["off", "Off", "disabled", "false"]],
    ["partly", ["on", "off"]],
    ["partly", ["off", "off", "enabled"]],
    ["unknown", ["0", "0"]],
    ["unknown", ["1", "1"]],
    ["unknown", ["off", "0"]],
    ["changing", ["ramp_up", "ramp_up"]],
    ["changing", ["on", "RampDown", "off"]],
    ["changing", ["up", "down"]],
    ["unknown", ["on", ""]],
    ["unknown", ["", ""]],
    ["unknown", ["off", "tripped"]],
    ["unknown", ["ramp_up", ""]],
    ["unknown", ["800.0", "800.0"]],
  ])("is %s of %j", (power, words) => {
    expect(summaryOf([list("State", ...words)]).power).toBe(power);
  });

  it("is never off while a voltage is measured, of whatever sign and at however few channels", () => {
    const off = list("HVState", "off", "off");
    const powerWith = (...more: BoardValue[]): string => summaryOf([off, ...more]).power;
    expect(powerWith(list("VMon", "0.2", "800.0"))).toBe("unknown");
    expect(powerWith(list("HVVoltage", "-800.0", ""))).toBe("unknown");
    expect(powerWith(single("vmon", "36"))).toBe("unknown");
    expect(powerWith(list("VMon", "0.2", "-0.4"))).toBe("off");
    expect(powerWith(list("VMon", "", "n/a"))).toBe("off");
  });

  it("is off whatever the set points are", () => {
    const setPoints = ["VoltageSet", "SetVoltage", "HVVoltageMax", "VoltageLimit", "TargetVoltage"];
    const values = [list("HVState", "off"), ...setPoints.map((name) => list(name, "800.0"))];
    expect(summaryOf(values)).toEqual({ power: "off", text: "HVState off" });
  });

  it("isn't that of alarms: 0 of them says nothing, and states with hv in their names go before", () => {
    expect(summaryOf([list("AlarmStatus", "0", "0"), list("VMon", "800", "800")]).power).toBe("unknown");
    expect(summaryOf([list("AlarmStatus", "0", "0"), list("VMon", "0.1", "0.1")]).power).toBe("unknown");
    expect(summaryOf([list("AlarmStatus", "0", "0"), list("HVState", "on", "on")])).toEqual({
      power: "on",
      text: "AlarmStatus 2 × 0; HVState 2 × on",
    });
    expect(summaryOf([single("AlarmState", "off"), list("hvState", "on", "on")]).power).toBe("on");
  });

  it("is said in words, with a mark of its own for each", () => {
    expect(powerWords.partly).toBe("◐ on in part");
    expect(new Set(Object.values(powerWords).map(([mark]) => mark)).size).toBe(5);
  });

  it("takes the state of a whole board, too", () => {
    expect(summaryOf([single("ChStatus", "on")])).toEqual({ power: "on", text: "ChStatus on" });
  });

  it("is unknown where no name tells of it, and where a list is empty", () => {
    expect(summaryOf([])).toEqual({ power: "unknown", text: "" });
    expect(summaryOf([single("Temperature", "36.6")])).toEqual({ power: "unknown", text: "" });
    expect(summaryOf([list("HVState")])).toEqual({ power: "unknown", text: "HVState –" });
  });
});

describe("counted words", () => {
  it("stand in the order of their first channel", () => {
    expect(counted(["ramp_up", "on", "ramp_up"])).toBe("2 × ramp_up, 1 × on");
  });

  it("show empty ones as a dash", () => {
    expect(counted(["", "on"])).toBe("1 × –, 1 × on");
    expect(counted([""])).toBe("–");
    expect(counted([])).toBe("–");
  });
});

describe("a range of values", () => {
  it("is of numbers, not of texts", () => {
    expect(rangeOf(["1000", "20.5", "-3"])).toBe("-3 to 1000");
  });

  it("is one value when all are the same", () => {
    expect(rangeOf(["0.0", "0.0"])).toBe("0.0");
    expect(rangeOf(["7"])).toBe("7");
  });

  it("leaves out what is no number", () => {
    expect(rangeOf(["n/a", "", "5", "NaN", "Infinity"])).toBe("5");
    expect(rangeOf(["n/a"])).toBe("–");
    expect(rangeOf([])).toBe("–");
  });
});
