// Two people have changed the same announcement: what each has made of it, and what is to become of it.

import { html, nothing } from 'lit';
import type { AnnouncementBody } from '../api/objects';
import { differences } from '../model/draft';
import { store } from '../store/live';
import { t } from '../texts/page';
import { ask } from './ask';

/** Gives 'reload', 'overwrite', or 'merge', which is offered when they go together; '' when it is put off. */
export function askAboutConflict(
  mine: AnnouncementBody,
  theirs: AnnouncementBody,
  isMergeable: boolean,
): Promise<string> {
  const found = differences(mine, theirs, store);
  const c = t.editor.conflict;
  const content = html`<p>${c.text}</p>
    <table class="differences">
      <thead>
        <tr>
          <th scope="col">${c.field}</th>
          <th scope="col">${c.mine}</th>
          <th scope="col">${c.theirs}</th>
        </tr>
      </thead>
      <tbody>
        ${found.map(
          (one) =>
            html`<tr>
              <th scope="row">${one.field}</th>
              <td dir="auto">${one.mine}</td>
              <td dir="auto">${one.theirs}</td>
            </tr>`,
        )}
      </tbody>
    </table>
    ${isMergeable ? html`<p>${c.mergeable}</p>` : nothing}`;
  return ask(c.title, content, [
    { key: 'reload', text: c.reload, variant: 'default' },
    { key: 'overwrite', text: c.overwrite, variant: isMergeable ? 'default' : 'primary' },
    ...(isMergeable ? [{ key: 'merge', text: c.merge }] : []),
  ]);
}
