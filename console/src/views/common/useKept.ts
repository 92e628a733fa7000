import { useEffect, useState } from "preact/hooks";
import { parameter, setParameter } from "../../app/route";

/** Browsers refuse addresses that change all the time. */
const settleMs = 250;

/** A text that the operator chose: kept in the address a moment after it last changed. */
export function useKept(name: string): [string | null, (text: string | null) => void] {
  const inAddress = parameter(name);
  const [text, setText] = useState(inAddress);
  useEffect(() => setText(inAddress), [inAddress]);
  useEffect(() => {
    if (text === parameter(name)) {
      return undefined;
    }
    const timer = setTimeout(() => setParameter(name, text), settleMs);
    return () => clearTimeout(timer);
  }, [text]);
  return [text, setText];
}
