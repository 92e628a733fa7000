// Numbers as operators read them.

const prefixes = ["", "k", "M", "G", "T", "P"];

/** Three or four digits and a prefix: 999, 1.00 k, 12.3 M. */
export function short(value: number): string {
  if (!Number.isFinite(value)) {
    return "–";
  }
  const sign = value < 0 ? "−" : "";
  let size = Math.abs(value);
  let prefix = 0;
  while (size >= 999.5 && prefix < prefixes.length - 1) {
    size /= 1000;
    ++prefix;
  }
  if (prefix === 0) {
    return sign + (Number.isInteger(size) ? String(size) : size.toFixed(size < 10 ? 2 : 1));
  }
  return `${sign}${size.toFixed(size < 9.995 ? 2 : size < 99.95 ? 1 : 0)} ${prefixes[prefix]}`;
}

/** All digits, in groups: 12 345 678. */
export function whole(value: number): string {
  return Number.isFinite(value) ? Math.round(value).toString().replace(/\B(?=(\d{3})+(?!\d))/g, "\u202f") : "–";
}

/** 0:07, 12:34, 3:25:45, 2 d 03:25:45. */
export function duration(seconds: number): string {
  if (!Number.isFinite(seconds)) {
    return "–";
  }
  const total = Math.max(0, Math.floor(seconds));
  const two = (n: number): string => String(n).padStart(2, "0");
  const days = Math.floor(total / 86400);
  const [hours, minutes] = [Math.floor(total / 3600) % 24, Math.floor(total / 60) % 60];
  if (days > 0) {
    return `${days} d ${two(hours)}:${two(minutes)}:${two(total % 60)}`;
  }
  return hours > 0 ? `${hours}:${two(minutes)}:${two(total % 60)}` : `${minutes}:${two(total % 60)}`;
}

/** A time of day, by the browser's clock. */
export function timeOfDay(at: number): string {
  return new Date(at).toLocaleTimeString(undefined, { hour12: false });
}
