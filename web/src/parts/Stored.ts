// An announcement as the controller has it: read, stored, and what becomes of two that were written at a time.

import { exchange, Problem, request } from '../api/request';
import type { AnnouncementBody } from '../api/objects';
import { blank, bodyOf } from '../model/draft';
import { merged } from '../model/merge';
import { t } from '../texts/page';
import { ask } from './ask';
import { askAboutConflict } from './conflict';
import { toast } from './ui-toasts';

const PATH = '/api/announcements/{id}';

export interface Outcome {
  isStored: boolean;
  draft: AnnouncementBody; // what to go on with
}

export class Stored {
  body: AnnouncementBody = blank();
  private tag = ''; // of what was read, so that nobody else's change is overwritten unseen

  /** `id`: null for one that is not stored yet. */
  constructor(public id: number | null) {}

  /** Throws `Problem`. */
  async read(): Promise<AnnouncementBody> {
    const { value, etag } = await exchange('get', PATH, { path: { id: this.id ?? 0 } });
    this.body = bodyOf(value);
    this.tag = etag;
    return this.body;
  }

  /** Asks where somebody else was faster. Throws `Problem`. */
  async store(draft: AnnouncementBody): Promise<Outcome> {
    try {
      this.id = await this.send(draft);
    } catch (problem) {
      const status = problem instanceof Problem ? problem.status : 0;
      if (status === 412) return this.resolveConflict(draft);
      if (status === 404 && this.id !== null) return this.resolveDeletion(draft);
      throw problem;
    }
    this.body = draft;
    toast({ text: t.editor.saved(draft.name), tone: 'good' });
    return { isStored: true, draft };
  }

  private async send(draft: AnnouncementBody): Promise<number> {
    const { id } = this;
    if (id === null) return (await request('post', '/api/announcements', { body: draft })).id;
    const { value, etag } = await exchange('put', PATH, { path: { id }, body: draft, ifMatch: this.tag });
    this.tag = etag;
    return value.id;
  }

  private async resolveConflict(mine: AnnouncementBody): Promise<Outcome> {
    const base = this.body;
    const before = this.tag;
    const theirs = await this.read();
    const both = merged(base, mine, theirs);
    const answer = await askAboutConflict(mine, theirs, both !== null);
    if (answer === 'overwrite') return this.store(mine);
    if (answer === 'merge' && both) return this.store(both);
    if (answer === 'reload') return { isStored: false, draft: theirs };
    this.body = base;
    this.tag = before; // put off: the next try asks again
    return { isStored: false, draft: mine };
  }

  private async resolveDeletion(mine: AnnouncementBody): Promise<Outcome> {
    const { deletedTitle, deletedText, saveAsNew } = t.editor;
    const answer = await ask(deletedTitle, deletedText, [{ key: 'new', text: saveAsNew }]);
    if (answer !== 'new') return { isStored: false, draft: mine };
    this.id = null;
    return this.store(mine);
  }
}
