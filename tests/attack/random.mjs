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

// Of one of several that go on at a time; it depends on the seed and the lane, counted from 1, alone.
export function randomOfLane(lane) {
  const root = randomFrom(seed);
  for (let before = 1; before < lane; ++before) root.branch();
  return root.branch();
}
