/** Kinds of colour vision, as what is left of linear red, green and blue (Machado, Oliveira, Fernandes 2009). */
export const visions = {
  usual: [[1, 0, 0], [0, 1, 0], [0, 0, 1]],
  protan: [[0.152286, 1.052583, -0.204868], [0.114503, 0.786281, 0.099216], [-0.003882, -0.048116, 1.051998]],
  deutan: [[0.367322, 0.860646, -0.227968], [0.280085, 0.672501, 0.047413], [-0.01182, 0.04294, 0.968881]],
  tritan: [[1.255528, -0.076749, -0.178779], [-0.078411, 0.930809, 0.147602], [0.004733, 0.691367, 0.3039]],
} as const;
export type Vision = keyof typeof visions;

type Triple = readonly number[];

function linearOf(colour: string): Triple {
  return [1, 3, 5]
    .map((at) => parseInt(colour.slice(at, at + 2), 16) / 255)
    .map((part) => (part <= 0.04045 ? part / 12.92 : ((part + 0.055) / 1.055) ** 2.4));
}

const times = (rows: readonly Triple[], vector: Triple): number[] =>
  rows.map((row) => row.reduce((sum, weight, i) => sum + weight * vector[i]!, 0));

const toXyz = [
  [0.4124564, 0.3575761, 0.1804375],
  [0.2126729, 0.7151522, 0.072175],
  [0.0193339, 0.119192, 0.9503041],
];
const white = [0.95047, 1, 1.08883];

function labOf(linear: Triple): Triple {
  const [x, y, z] = times(toXyz, linear)
    .map((part, i) => part / white[i]!)
    .map((t) => (t > 216 / 24389 ? Math.cbrt(t) : ((24389 / 27) * t + 16) / 116)) as [number, number, number];
  return [116 * y - 16, 500 * (x - y), 200 * (y - z)];
}

/** In CIE 1976 L*a*b*; about 2 is just seen, 20 at a glance. */
export function distance(a: string, b: string, vision: Vision): number {
  const seen = (colour: string): Triple =>
    labOf(times(visions[vision], linearOf(colour)).map((part) => Math.min(1, Math.max(0, part))));
  const [left, right] = [seen(a), seen(b)];
  return Math.hypot(...left.map((part, i) => part - right[i]!));
}

/** As the Web Content Accessibility Guidelines have it: from 1 to 21. */
export function contrast(a: string, b: string): number {
  const luminance = (colour: string): number => times(toXyz, linearOf(colour))[1]!;
  const [dark, light] = [luminance(a), luminance(b)].sort((x, y) => x - y) as [number, number];
  return (light + 0.05) / (dark + 0.05);
}
