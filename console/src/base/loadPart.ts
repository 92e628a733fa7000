/** A part of the page that can't be loaded. `message` is for the operator. */
export class PartMissing extends Error {}

/** A part that isn't loaded at first: after an upgrade it may not be there any more. Fails with PartMissing. */
export async function loadPart<T>(what: string, load: () => Promise<T>): Promise<T> {
  try {
    return await load();
  } catch (error) {
    const reason = error instanceof Error ? error.message : String(error);
    throw new PartMissing(`${what} couldn't be loaded; reload the page. (${reason})`);
  }
}
