/** Position = gain × bin + offset. A bin's number stands for its centre: bin 5 reaches from 4.5 to 5.5. */
export interface Calibration {
  gain: number;
  offset: number;
  unit: string;
}

export const inBins: Calibration = { gain: 1, offset: 0, unit: "bin" };

export function isCalibration(value: unknown): value is Calibration {
  const { gain, offset, unit } = (value ?? {}) as Partial<Record<keyof Calibration, unknown>>;
  const rises = typeof gain === "number" && gain > 0 && gain < Infinity;
  return rises && Number.isFinite(offset) && typeof unit === "string";
}

export function isSame(a: Calibration, b: Calibration): boolean {
  return a.gain === b.gain && a.offset === b.offset && a.unit === b.unit;
}

export function positionOf(bin: number, { gain, offset }: Calibration): number {
  return gain * bin + offset;
}

export function binOf(position: number, { gain, offset }: Calibration): number {
  return (position - offset) / gain;
}

/** A line that is known to stand at a bin. */
export interface KnownPoint {
  bin: number;
  position: number;
}

/**
 * The calibration by least squares through the points; of one point that through zero. Null when none rises
 * through them: no points, two in one bin, or positions that fall.
 */
export function calibrationOf(points: readonly KnownPoint[], unit: string): Calibration | null {
  const gain = points.length === 1 ? points[0]!.position / points[0]!.bin : slopeOf(points);
  const mean = meanOf(points);
  const found = { gain, offset: points.length === 1 ? 0 : mean.position - gain * mean.bin, unit };
  return isCalibration(found) ? found : null;
}

function meanOf(points: readonly KnownPoint[]): KnownPoint {
  const mean = (of: (point: KnownPoint) => number): number =>
    points.reduce((total, point) => total + of(point), 0) / points.length;
  return { bin: mean((point) => point.bin), position: mean((point) => point.position) };
}

function slopeOf(points: readonly KnownPoint[]): number {
  const mean = meanOf(points);
  let [products, squares] = [0, 0];
  for (const { bin, position } of points) {
    products += (bin - mean.bin) * (position - mean.position);
    squares += (bin - mean.bin) ** 2;
  }
  return products / squares;
}
