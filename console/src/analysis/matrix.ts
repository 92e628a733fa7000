export type Matrix = number[][];

/** The inverse of a symmetric, positive definite matrix; null of any other. */
export function inverseOf(matrix: Matrix): Matrix | null {
  // Scaled to ones on the diagonal: its elements may be of very different size.
  const scale = matrix.map((row, i) => 1 / Math.sqrt(row[i]!));
  const work = matrix.map((row, i) => [
    ...row.map((value, j) => value * scale[i]! * scale[j]!),
    ...row.map((_, j) => (i === j ? 1 : 0)),
  ]);
  for (let k = 0; k < work.length; ++k) {
    if (!(work[k]![k]! > 1e-12)) {
      return null;
    }
    eliminate(work, k);
  }
  return work.map((row, i) => row.slice(work.length).map((value, j) => value * scale[i]! * scale[j]!));
}

function eliminate(work: Matrix, k: number): void {
  const pivot = work[k]![k]!;
  work[k] = work[k]!.map((value) => value / pivot);
  work.forEach((row, i) => {
    const factor = row[k]!;
    if (i !== k && factor !== 0) {
      work[i] = row.map((value, j) => value - factor * work[k]![j]!);
    }
  });
}

export function multiplied(matrix: Matrix, vector: readonly number[]): number[] {
  return matrix.map((row) => dot(row, vector));
}

export function dot(a: readonly number[], b: readonly number[]): number {
  return a.reduce((sum, value, i) => sum + value * b[i]!, 0);
}
