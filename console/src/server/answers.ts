/** An answer that isn't what its question should bring. `message` is for the operator. */
export class BadAnswer extends Error {}

export type Json = null | boolean | number | string | Json[] | { [key: string]: Json };
export type JsonObject = { [key: string]: Json };

/** `what` names the answer in the message of BadAnswer. */
export function parseJson(text: string, what: string): Json {
  if (text === "") {
    throw new BadAnswer(
      `No block answers for ${what}: it may have been renamed or taken out of the configuration.`,
    );
  }
  try {
    return JSON.parse(text) as Json;
  } catch {
    throw new BadAnswer(`The answer for ${what} is no JSON: ${excerpt(text)}`);
  }
}

export function asObject(value: Json | undefined, what: string): JsonObject {
  if (value === null || typeof value !== "object" || Array.isArray(value)) {
    throw unexpected(what, "an object", value);
  }
  return value;
}

export function asArray(value: Json | undefined, what: string): Json[] {
  if (!Array.isArray(value)) {
    throw unexpected(what, "a list", value);
  }
  return value;
}

export function asNumber(value: Json | undefined, what: string): number {
  if (typeof value !== "number") {
    throw unexpected(what, "a number", value);
  }
  return value;
}

export function asText(value: Json | undefined, what: string): string {
  if (typeof value !== "string") {
    throw unexpected(what, "a text", value);
  }
  return value;
}

function unexpected(what: string, expected: string, found: Json | undefined): BadAnswer {
  const shown = found === undefined ? "nothing" : excerpt(JSON.stringify(found));
  return new BadAnswer(`The answer for ${what} holds ${shown} where ${expected} should be.`);
}

function excerpt(text: string): string {
  return text.length > 80 ? `${text.slice(0, 77)}…` : text;
}

/** Counts: the server writes unsigned 32-bit numbers as signed ones. */
export function countsOf(value: Json | undefined, what: string): Uint32Array {
  const numbers = asArray(value, what);
  const counts = new Uint32Array(numbers.length);
  for (let i = 0; i < numbers.length; ++i) {
    const number = numbers[i];
    if (typeof number !== "number") {
      throw unexpected(what, "a count", number);
    }
    counts[i] = number; // modulo 2^32, which undoes the sign
  }
  return counts;
}

/** Samples and the like, whatever numbers they are. */
export function numbersOf(value: Json | undefined, what: string): Float64Array {
  const numbers = asArray(value, what);
  const result = new Float64Array(numbers.length);
  for (let i = 0; i < numbers.length; ++i) {
    result[i] = asNumber(numbers[i], what);
  }
  return result;
}
