import { signal } from "@preact/signals";
import { type Calibration, isCalibration } from "../../analysis/calibration";
import type { Range } from "../../analysis/region";
import { load, save } from "../../base/storage";
import { blockPathOf } from "./curveKey";
import type { KnownLine } from "./knownLines";

// What the operator entered stays in the browser: calibrations and known lines by curve, since channels differ;
// regions, which are parts of the axis in bins, by the block's path.

/** A part of the axis, in bins. */
export type Region = Range;

export const mostRegions = 12;
const mostLines = 32;

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

/** Null where none was entered. `owner` is a curve, or a block's path: what holds for all its channels. */
export function calibrationKeptFor(owner: string): Calibration | null {
  const value = read(`calibration ${owner}`);
  return isCalibration(value) ? value : null;
}

/** The curve's own, or else its block's. */
export function storedCalibration(curve: string): Calibration | null {
  return calibrationKeptFor(curve) ?? calibrationKeptFor(blockPathOf(curve));
}

export function storeCalibration(owner: string, calibration: Calibration | null): void {
  write(`calibration ${owner}`, calibration);
}

/** How long a unit of the block's timestamps is; null where the operator didn't say. */
export function storedUnitNs(path: string): number | null {
  const value = read(`timestamp unit ${path}`);
  return isPositive(value) ? value : null;
}

export function storeUnitNs(path: string, ns: number | null): void {
  write(`timestamp unit ${path}`, ns);
}

export function isPositive(value: unknown): value is number {
  return typeof value === "number" && value > 0 && value < Infinity;
}

export function storedLines(curve: string): KnownLine[] {
  const value = read(`lines ${curve}`);
  return Array.isArray(value) ? value.filter(isLine).slice(0, mostLines) : [];
}

export function storeLines(curve: string, lines: readonly KnownLine[]): void {
  write(`lines ${curve}`, lines.length === 0 ? null : lines.slice(0, mostLines));
}

export function storedRegions(path: string): Region[] {
  const value = read(`regions ${path}`);
  return Array.isArray(value) ? value.filter(isRegion).slice(0, mostRegions) : [];
}

export function storeRegions(path: string, regions: readonly Region[]): void {
  write(`regions ${path}`, regions.length === 0 ? null : regions.slice(0, mostRegions));
}

function isRegion(value: unknown): value is Region {
  const { from, to } = (value ?? {}) as Partial<Record<keyof Region, unknown>>;
  const isWhole = Number.isInteger(from) && Number.isInteger(to);
  return isWhole && (from as number) >= 0 && (to as number) > (from as number);
}

function isLine(value: unknown): value is KnownLine {
  const { bin, position, unit } = (value ?? {}) as Partial<Record<keyof KnownLine, unknown>>;
  return Number.isFinite(bin) && Number.isFinite(position) && typeof unit === "string";
}
