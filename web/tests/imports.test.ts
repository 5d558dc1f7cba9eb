import { expect, it } from 'vitest';

const sources = import.meta.glob<string>('../src/**/*.ts', { query: '?raw', import: 'default', eager: true });
const files = Object.keys(sources);

/** What the file imports of our own, types included. */
function importsOf(file: string): string[] {
  const named = [...(sources[file] ?? '').matchAll(/(?:from|import) '(\.[^']+)'/g)].map((match) => match[1] ?? '');
  const paths = named.map((name) => new URL(name, `file:///web/tests/${file}`).pathname.replace('/web/', '../'));
  return paths.map((path) => [`${path}.ts`, `${path}/index.ts`].find((one) => files.includes(one)) ?? path);
}

/** The first way that leads back to where it began; empty when there is none. */
function circleIn(arrows: Map<string, string[]>): string[] {
  const isDone = new Set<string>();
  const follow = (node: string, way: string[]): string[] => {
    if (way.includes(node)) return [...way.slice(way.indexOf(node)), node];
    if (isDone.has(node)) return [];
    for (const next of arrows.get(node) ?? []) {
      const circle = follow(next, [...way, node]);
      if (circle.length > 0) return circle;
    }
    isDone.add(node);
    return [];
  };
  return [...arrows.keys()].map((node) => follow(node, [])).find((circle) => circle.length > 0) ?? [];
}

it('no file leads back to itself by what it imports', () => {
  const arrows = new Map(files.map((file) => [file, importsOf(file)]));
  expect([...arrows.values()].flat().length).toBeGreaterThan(files.length);
  expect(circleIn(arrows)).toEqual([]);
});
