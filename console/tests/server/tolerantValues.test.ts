import { describe, expect, it } from "vitest";
import { readBoardValues } from "../../src/server/tolerantValues";

const all = (entries: string): string => `{"response":"ok",${entries}}`;
const readOnly = (entries: string): string => `{"data":[${entries}]}`;

/** Scalars as texts, arrays as lists; what can't be read fails the test. */
function read(text: string): [string, string | string[]][] {
  const answer = readBoardValues(text);
  expect(answer.complaints).toEqual([]);
  return answer.values.map(({ name, isArray, values }) => {
    expect(isArray || values.length === 1).toBe(true);
    return [name, isArray ? values : values[0]!];
  });
}

describe("the answer of all values", () => {
  it("is read as the simulated board gives it", () => {
    const text =
      '{"response":"ok","HVSet":[800.0,800.0,750.0,700.0],"HVState":[off,off,ramp_up,on],"Temperature":36.6}';
    expect(read(text)).toEqual([
      ["HVSet", ["800.0", "800.0", "750.0", "700.0"]],
      ["HVState", ["off", "off", "ramp_up", "on"]],
      ["Temperature", "36.6"],
    ]);
  });

  it.each<[string, string, [string, string | string[]][]]>([
    ["has no parameters", "", []],
    ["lacks the last parameter, whose comma stays", '"a":1,', [["a", "1"]]],
    ["has an empty value at its end", '"a":', [["a", ""]]],
    ["has an empty value before another", '"a":,"b":2', [["a", ""], ["b", "2"]]],
    ["has an empty value and a comma at its end", '"a":,', [["a", ""]]],
    ["has no channels", '"a":[]', [["a", []]]],
    ["has empty values of channels", '"a":[1,,3],"b":[,]', [["a", ["1", "", "3"]], ["b", ["", ""]]]],
    ["has a comma in a scalar", '"a":x,y,"b":1', [["a", "x,y"], ["b", "1"]]],
    ["has blanks in a value", '"Serial":A 7,"b":1', [["Serial", "A 7"], ["b", "1"]]],
    ["has braces in a value", '"a":}{', [["a", "}{"]]],
    ["has a lone quote in a value", '"a":5",b,"c":1', [["a", '5",b'], ["c", "1"]]],
    ["has quoted values, as JSON would", '"a":"on","b":["on","off"]', [["a", "on"], ["b", ["on", "off"]]]],
    ["has blanks as JSON may", ' "a" : 1 ,\n "b" : [ 1 , 2 ] ', [["a", "1"], ["b", ["1", "2"]]]],
    ["has names of any kind", '"":1,"Δ x":2,"a:b":3', [["", "1"], ["Δ x", "2"], ["a:b", "3"]]],
    ["has a name twice", '"a":1,"a":2', [["a", "1"], ["a", "2"]]],
    ["has only one channel", '"a":[7]', [["a", ["7"]]]],
  ])("is read when it %s", (_, entries, expected) => {
    expect(read(all(entries))).toEqual(expected);
  });
});

describe("the answer of read-only values", () => {
  it("is read as the simulated board gives it", () => {
    const text = '{"data":[{"HVState":[off,off],{"HVVoltage":[0.0,0.1],{"Temperature":36.6}]}';
    expect(read(text)).toEqual([
      ["HVState", ["off", "off"]],
      ["HVVoltage", ["0.0", "0.1"]],
      ["Temperature", "36.6"],
    ]);
  });

  it.each<[string, string, [string, string | string[]][]]>([
    ["has no parameters", "", []],
    ["begins with one that was left out", ',{"a":1}', [["a", "1"]]],
    ["has left-out ones between", '{"a":1},,,{"b":2}', [["a", "1"], ["b", "2"]]],
    ["has a left-out one behind a list", '{"a":[1],,{"b":2}', [["a", ["1"]], ["b", "2"]]],
    ["ends with left-out ones", '{"a":1},,', [["a", "1"]]],
    ["has only left-out ones", ",,", []],
    ["has an empty value", '{"a":},{"b":[]', [["a", ""], ["b", []]]],
    ["has a value that ends in a brace", '{"a":x}},{"b":1}', [["a", "x}"], ["b", "1"]]],
    ["closes its lists, as JSON would", '{"a":[1,2]},{"b":[3]}', [["a", ["1", "2"]], ["b", ["3"]]]],
    ["has a comma in a scalar", '{"a":x,y},{"b":1}', [["a", "x,y"], ["b", "1"]]],
  ])("is read when it %s", (_, entries, expected) => {
    expect(read(readOnly(entries))).toEqual(expected);
  });
});

describe("an answer that is broken", () => {
  it.each([
    ["", "no values"],
    ["{}", "no values"],
    ["[]", "no values"],
    ['[{"response": true}]', "no values"],
    ["<html>502 Bad Gateway</html>", "no values"],
    ['{"response":"ok",1,"a":1}', "without a name"],
    ['{"response":"ok",a:1}', "without a name"],
    ['{"response":"ok","a":1', "end of the answer is missing"],
    ['{"response":"ok","a":[1,"b":2}', "list of a has no end"],
    ['{"data":[{"a":[1,2', "end of the answer is missing"],
    ['{"data":[{"a', "end of the answer is missing"],
  ])("is said what is wrong with: %s", (text, complaint) => {
    expect(readBoardValues(text).complaints.join("\n")).toContain(complaint);
  });

  it("still gives what it holds", () => {
    const answer = readBoardValues('{"response":"ok","a":[1,2],"b":3,"c":[4,');
    expect(answer.values).toEqual([
      { name: "a", isArray: true, values: ["1", "2"] },
      { name: "b", isArray: false, values: ["3"] },
      { name: "c", isArray: false, values: ["[4"] },
    ]);
    expect(answer.complaints).toHaveLength(2);
  });

  it("is shown in parts only", () => {
    const [complaint = ""] = readBoardValues("x".repeat(100_000)).complaints;
    expect(complaint.length).toBeLessThan(120);
  });

  it("never makes it fail, wherever it is cut off or changed", () => {
    const whole = '{"data":[{"HVState":[off,on],{"B":1},,{"Temperature":36.6}]}';
    for (let i = 0; i <= whole.length; ++i) {
      expect(() => readBoardValues(whole.slice(0, i))).not.toThrow();
      for (const part of ['"', "{", "}", "[", "]", ",", ":", "\\", "\0", "é"]) {
        expect(() => readBoardValues(whole.slice(0, i) + part + whole.slice(i + 1))).not.toThrow();
      }
    }
  });
});

// What takes time in proportion takes milliseconds; the square of it would take minutes, beyond the test's limit.
describe("a huge answer", () => {
  const size = 900_000;
  it.each([
    ["quotes", '"'.repeat(size)],
    ["commas with quotes", ',"'.repeat(size / 2)],
    ["blanks", " ".repeat(size)],
    ["blanks between quotes", '"   '.repeat(size / 4)],
    ["commas", ",".repeat(size)],
    ["opening braces", "{".repeat(size)],
    ["opening brackets", "[".repeat(size)],
    ["values without names", "1,".repeat(size / 2)],
    ["empty names", '"":'.repeat(size / 3)],
  ])("of %s is read at once", (_, filling) => {
    readBoardValues(`{"response":"ok",${filling}}`);
    readBoardValues(`{"data":[${filling}`);
    readBoardValues(filling);
  });

  it("is read whole", () => {
    const channels = Array.from({ length: 1024 }, (_, i) => String(i));
    const names = Array.from({ length: 200 }, (_, i) => `P${i}`);
    const answer = readBoardValues(all(names.map((name) => `"${name}":[${channels.join(",")}]`).join(",")));
    expect(answer.values.map((value) => value.name)).toEqual(names);
    expect(answer.values.every(({ values }) => values.length === 1024 && values[1023] === "1023")).toBe(true);
  });
});
