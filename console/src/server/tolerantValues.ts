/** A board's parameter with its value, or its values by channel, as the board gives them. */
export interface BoardValue {
  name: string;
  isArray: boolean;
  /** Exactly one where it isn't an array. */
  values: string[];
}

export interface BoardAnswer {
  values: BoardValue[];
  /** What could not be read, for the operator. */
  complaints: string[];
}

/**
 * Reads the values of a board from either of the block's answers. They are mostly no JSON: values stand there
 * without quotes, the objects of "read_only" stay open behind a list, and parameters that are left out leave their
 * comma. So a value ends where the next name begins. Never fails, and takes time in proportion to the text,
 * whatever it is.
 */
export function readBoardValues(text: string): BoardAnswer {
  for (const form of forms) {
    const head = form.head.exec(text);
    if (head !== null) {
      return readBody(text.slice(head[0].length), form);
    }
  }
  return { values: [], complaints: [`The answer has no values in it: ${excerpt(text)}`] };
}

interface Form {
  head: RegExp;
  tail: RegExp;
  /** The text of a value, of what stands between its name and the next. */
  cut: (between: string) => string;
}

const forms: readonly Form[] = [
  { head: /^\s*\{\s*"response"\s*:\s*"ok"\s*,?/, tail: /\}$/, cut: withoutComma },
  { head: /^\s*\{\s*"data"\s*:\s*\[/, tail: /\]\s*\}$/, cut: withoutObject },
];

function readBody(body: string, form: Form): BoardAnswer {
  const complaints: string[] = [];
  const trimmed = body.trimEnd();
  const tail = form.tail.exec(trimmed.slice(-tailRoom));
  if (tail === null) {
    complaints.push("The end of the answer is missing: its last value may be cut off.");
  }
  const entries = tail === null ? trimmed : trimmed.slice(0, trimmed.length - tail[0].length);
  const names = findNames(entries);
  const before = entries.slice(0, names[0]?.begin ?? entries.length);
  if (!/^[\s,{]*$/.test(before)) {
    complaints.push(`A value stands there without a name: ${excerpt(before)}`);
  }
  const values = names.map((name, i) => {
    const between = entries.slice(name.end, names[i + 1]?.begin ?? entries.length);
    return valueOf(name.text, form.cut(between.trim()).trim(), complaints);
  });
  return { values, complaints };
}

/** So far from the end the tail is looked for. */
const tailRoom = 100;

interface Name {
  text: string;
  begin: number;
  /** Behind its colon. */
  end: number;
}

/** The texts in quotes with a colon behind them, at the beginning or behind a comma or an opening brace. */
function findNames(text: string): Name[] {
  const names: Name[] = [];
  let quote = text.indexOf('"');
  while (quote >= 0) {
    const closing = text.indexOf('"', quote + 1);
    if (closing < 0) {
      break;
    }
    const colon = skipBlanks(text, closing + 1, 1);
    const isName = text[colon] === ":" && ["", ",", "{"].includes(text[skipBlanks(text, quote - 1, -1)] ?? "");
    if (isName) {
      names.push({ text: text.slice(quote + 1, closing), begin: quote, end: colon + 1 });
    }
    quote = isName ? text.indexOf('"', colon + 1) : closing;
  }
  return names;
}

function skipBlanks(text: string, from: number, step: 1 | -1): number {
  let at = from;
  while (text[at] === " " || text[at] === "\t" || text[at] === "\n" || text[at] === "\r") {
    at += step;
  }
  return at;
}

function withoutComma(between: string): string {
  return between.endsWith(",") ? between.slice(0, -1) : between;
}

// Of `[1,2],{` and `31.5},,{`: the opening brace belongs to the next name, the closing one to this.
function withoutObject(between: string): string {
  const opened = between.endsWith("{") ? between.slice(0, -1) : between;
  let end = opened.length;
  while (opened[end - 1] === "," || opened[end - 1] === " ") {
    --end;
  }
  return opened[end - 1] === "}" ? opened.slice(0, end - 1) : opened.slice(0, end);
}

function valueOf(name: string, text: string, complaints: string[]): BoardValue {
  if (!text.startsWith("[")) {
    return { name, isArray: false, values: [unquoted(text)] };
  }
  if (!text.endsWith("]")) {
    complaints.push(`The list of ${excerpt(name)} has no end: ${excerpt(text)}`);
    return { name, isArray: false, values: [text] };
  }
  const inner = text.slice(1, -1).trim();
  return { name, isArray: true, values: inner === "" ? [] : inner.split(",").map(unquoted) };
}

function unquoted(text: string): string {
  const value = text.trim();
  return value.length >= 2 && value.startsWith('"') && value.endsWith('"') ? value.slice(1, -1) : value;
}

function excerpt(text: string): string {
  return text.length > 60 ? `${text.slice(0, 57)}…` : text;
}
