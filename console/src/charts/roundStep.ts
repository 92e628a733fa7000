/** The least of 1, 2, 5 times a power of ten that isn't below; 1 where there is none. */
export function roundStep(least: number): number {
  if (!(least > 0) || !Number.isFinite(least)) {
    return 1;
  }
  const power = Math.floor(Math.log10(least));
  const decade = power < 0 ? 1 / 10 ** -power : 10 ** power;
  const factor = [1, 2, 5].find((candidate) => candidate * decade >= least * (1 - 1e-9)) ?? 10;
  return factor * decade;
}
