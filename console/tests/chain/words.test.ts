import { expect, test } from "vitest";
import { shapeRows, wordsOf } from "../../src/views/chain/words";

test("fates without words of their own are shown as the server calls them", () => {
  expect(wordsOf("while_stopped")).toBe("while stopped");
  expect(wordsOf("full_queue")).toBe("dropped at full queues");
});

test("a shape is shown value by value, long ones cut", () => {
  expect(shapeRows({ data_type: "energy", bins: 2048, channels: ["a", "b"], odd: null })).toEqual([
    ["data type", "energy"],
    ["bins", "2048"],
    ["channels", "a, b"],
    ["odd", "null"],
  ]);
  expect(shapeRows({ name: "x".repeat(1000) })[0]![1]).toHaveLength(200);
});
