// Parts of the page that are fetched when they are first needed.

const AGAIN = 1000; // after as many milliseconds, when there was no connection to fetch it over

/** Fetches the part, however often that takes. */
export const fetched = <Part>(part: () => Promise<Part>): Promise<Part> =>
  part().catch(
    () =>
      new Promise<Part>((resolve) => {
        setTimeout(() => resolve(fetched(part)), AGAIN);
      }),
  );
