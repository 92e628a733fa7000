import { roundStep } from "../roundStep";

/** Round values (1, 2 or 5 times a power of ten apart) within the range, about `count` or fewer of them. */
export function roundTicks(low: number, high: number, count: number, leastStep = 0): number[] {
  if (!(high > low) || count < 1) {
    return [];
  }
  const step = Math.max(roundStep((high - low) / count), leastStep);
  const ticks: number[] = [];
  for (let i = Math.ceil(low / step - 1e-9); i * step <= high + step * 1e-9; ++i) {
    ticks.push(Number((i * step).toPrecision(12)));
  }
  return ticks;
}

/** Powers of ten within the range, thinned to `count`; over a short range round values between them, too. */
export function logTicks(low: number, high: number, count: number): number[] {
  if (!(low > 0 && high > low)) {
    return [];
  }
  const decades = Math.log10(high / low);
  const within = (tick: number): boolean => tick >= low * (1 - 1e-9) && tick <= high * (1 + 1e-9);
  const factors = 3 * decades <= count ? [1, 2, 5] : [1];
  const every = Math.max(1, Math.ceil(decades / Math.max(1, count)));
  const ticks: number[] = [];
  for (let power = Math.floor(Math.log10(low)); power <= Math.log10(high); ++power) {
    if (power % every === 0) {
      ticks.push(...factors.map((factor) => factor * 10 ** power).filter(within));
    }
  }
  return ticks;
}
