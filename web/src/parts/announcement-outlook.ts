// What playing an announcement will do, asked of the agent and asked again when it changes.

import { LitElement, css, html, nothing, type PropertyValues } from 'lit';
import { customElement, property, state } from 'lit/decorators.js';
import { Problem, request } from '../api/request';
import type { AnnouncementBody, Rehearsal } from '../api/objects';
import { errorsIn } from '../model/draft';
import { Reading, store } from '../store/live';
import { shared } from '../styles/shared';
import { t } from '../texts/page';
import './announcement-timeline';

const PAUSE = 350; // while somebody types

@customElement('announcement-outlook')
export class AnnouncementOutlook extends LitElement {
  static override styles = [
    shared,
    css`
      :host {
        display: block;
        min-height: 5rem;
      }
      h3 {
        margin-bottom: 0.6rem;
      }
    `,
  ];

  @property({ attribute: false }) announcement!: AnnouncementBody;
  @state() private rehearsal: Rehearsal | null = null;
  @state() private problem = '';
  private asked = '';
  private attempts = 0;
  private isMissed = false; // for want of a connection
  private timer = 0;

  constructor() {
    super();
    new Reading(this, () => {
      if (this.isMissed) void this.rehearse(this.asked, JSON.parse(this.asked) as AnnouncementBody);
    });
  }

  override willUpdate(changed: PropertyValues): void {
    if (!changed.has('announcement')) return;
    const body = { ...this.announcement, name: this.announcement.name || '-' };
    const text = JSON.stringify(body);
    if (text === this.asked) return;
    const pause = this.asked ? PAUSE : 0;
    const isWrong = Object.keys(errorsIn(body)).length > 0;
    this.asked = text;
    clearTimeout(this.timer);
    this.problem = isWrong ? t.timeline.wrong : '';
    if (!isWrong) this.timer = window.setTimeout(() => void this.rehearse(text, body), pause);
  }

  override disconnectedCallback(): void {
    super.disconnectedCallback();
    clearTimeout(this.timer);
  }

  private async rehearse(text: string, announcement: AnnouncementBody): Promise<void> {
    const attempt = ++this.attempts; // what an earlier one comes to counts no more
    this.isMissed = false;
    try {
      const rehearsal = await request('post', '/api/rehearsal', { body: { announcement } });
      if (attempt !== this.attempts || text !== this.asked) return;
      this.rehearsal = rehearsal;
      this.problem = '';
    } catch (problem) {
      if (attempt !== this.attempts || text !== this.asked) return;
      const status = problem instanceof Problem ? problem.status : undefined;
      // A connection that has just come back loses requests.
      if (status === 503 || (status === 0 && store.link.isConnected))
        this.timer = window.setTimeout(() => void this.rehearse(text, announcement), 2 * PAUSE);
      else this.problem = problem instanceof Problem ? problem.text : String(problem);
      this.isMissed = status === 0;
    }
  }

  override render(): unknown {
    return html`<h3>${t.timeline.title}</h3>
      ${
        this.problem
          ? html`<p class="soft">${this.problem}</p>`
          : html`<announcement-timeline .rehearsal=${this.rehearsal}></announcement-timeline>`
      }
      ${this.rehearsal || this.problem ? nothing : html`<p class="soft">${t.timeline.asking}</p>`}`;
  }
}
