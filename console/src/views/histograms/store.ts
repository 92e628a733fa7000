import { signal } from "@preact/signals";
import { type Calibration, isCalibration, type KnownPoint } from "../../analysis/calibration";
import type { Range } from "../../analysis/region";
import { load, save } from "../../base/storage";

// What the operator entered about a block stays in the browser, by the block's path.

/** A part of the axis, in bins, and where its line belongs when that is known. */
export interface Region extends Range {
  known?: KnownLine;
}

export interface KnownLine extends KnownPoint {
  /** The curve that the line was fitted in: channels of a block differ. */
  curve: string;
}

export const mostRegions = 12;

const version = signal(0);

function read(key: string): unknown {
  void version.value; // who reads is told of changes
  try {
    return JSON.parse(load(key) ?? "null");
  } catch {
    return null;
  }
}

function write(key: string, value: unknown): void {
  save(key, value === null ? null : JSON.stringify(value));
  ++version.value;
}

/** Null where the operator entered none. */
export function storedCalibration(path: string): Calibration | null {
  const value = read(`calibration ${path}`);
  return isCalibration(value) ? value : null;
}

export function storeCalibration(path: string, calibration: Calibration | null): void {
  write(`calibration ${path}`, calibration);
}

export function storedRegions(path: string): Region[] {
  const value = read(`regions ${path}`);
  return Array.isArray(value) ? value.filter(isRegion).slice(0, mostRegions) : [];
}

export function storeRegions(path: string, regions: readonly Region[]): void {
  write(`regions ${path}`, regions.length === 0 ? null : regions.slice(0, mostRegions));
}

function isRegion(value: unknown): value is Region {
  const { from, to, known } = (value ?? {}) as Partial<Record<keyof Region, unknown>>;
  return (
    Number.isInteger(from) && Number.isInteger(to) && (from as number) >= 0 && (to as number) > (from as number) &&
    (known === undefined || isKnownLine(known))
  );
}

function isKnownLine(value: unknown): value is KnownLine {
  const { bin, position, curve } = (value ?? {}) as Partial<Record<keyof KnownLine, unknown>>;
  return Number.isFinite(bin) && Number.isFinite(position) && typeof curve === "string";
}

export function knownLines(regions: readonly Region[], curve: string): KnownLine[] {
  return regions.flatMap(({ known }) => (known?.curve === curve ? known : []));
}
