/** Has the browser save a file. */
export function download(name: string, content: Blob): void {
  const link = document.createElement("a");
  link.href = URL.createObjectURL(content);
  link.download = name;
  link.click();
  setTimeout(() => URL.revokeObjectURL(link.href), 10_000);
}

/** A name that every system takes for a file, with the time in it. */
export function fileName(what: string, extension: string, at = new Date()): string {
  const time = at.toISOString().slice(0, 19).replace(/[:T]/g, "-");
  return `${what.replace(/[^A-Za-z0-9._-]+/g, "_")}_${time}.${extension}`;
}
