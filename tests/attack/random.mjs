// A fixed sequence, so that a run that failed can be run again: SEED=… with the seed that it printed.
export const seed = Number(process.env.SEED ?? Date.now() % 1000000);

export function randomFrom(start) {
  let state = start >>> 0;
  const below = (bound) => {
    state = (Math.imul(state, 1664525) + 1013904223) >>> 0;
    return Math.floor((state / 4294967296) * bound);
  };
  return {
    below,
    one: (list) => list[below(list.length)],
    // Independent of how many numbers the others take.
    branch: () => randomFrom(below(4294967296)),
  };
}
