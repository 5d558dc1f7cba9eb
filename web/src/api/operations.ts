// What each operation takes and gives, as the controller describes it.

import type { paths } from './types';

export type Path = keyof paths;

/** The methods that the path has: "get", "put", … */
export type Method<P extends Path> = {
  [M in keyof paths[P]]: paths[P][M] extends { responses: unknown } ? M : never;
}[keyof paths[P]] &
  string;

type Json<Response> = Response extends { content: { 'application/json': infer Body } } ? Body : null;

type Described<Operation> = Operation extends { responses: infer Responses }
  ? Json<Responses[keyof Responses & (200 | 201 | 202 | 204)]>
  : never;

/** The reply, when all is well; null where there is none. */
export type Reply<P extends Path, M extends Method<P>> = Described<paths[P][M]>;

type Parameters<Operation, Place extends string> = Operation extends { parameters: Partial<Record<Place, infer Given>> }
  ? Exclude<Given, undefined>
  : never;

type Body<Operation> = Operation extends { requestBody: { content: { 'application/json': infer Given } } }
  ? Given
  : never;

/** A member where there is something to be given; one that may be left out where all in it may. */
type Member<Name extends string, Given> = [Given] extends [never]
  ? unknown
  : Partial<Given> extends Given
    ? Partial<Record<Name, Given>>
    : Record<Name, Given>;

type GivenTo<Operation> = Member<'path', Parameters<Operation, 'path'>> &
  Member<'query', Parameters<Operation, 'query'>> &
  Member<'body', Body<Operation>> & {
    ifMatch?: string; // the tag that the announcement must still have
  };

/** What goes with a request: the values for the braces in the path, the query, the body. */
export type Given<P extends Path, M extends Method<P>> =
  Partial<GivenTo<paths[P][M]>> extends GivenTo<paths[P][M]>
    ? [given?: GivenTo<paths[P][M]>]
    : [given: GivenTo<paths[P][M]>];
