// When the draft is heard and shown, and for how long: folded away, since what is automatic is most often right.

import { css, html } from 'lit';
import { customElement } from 'lit/decorators.js';
import { seconds } from '../model/format';
import { t } from '../texts/page';
import { DraftPart } from './draft-part';

@customElement('draft-timing')
export class DraftTiming extends DraftPart {
  static override styles = [
    ...DraftPart.styles,
    css`
      summary {
        display: flex;
        flex-wrap: wrap;
        align-items: center;
        gap: 0.2rem 0.75rem;
        min-height: 2.75rem;
        cursor: pointer;
      }
      summary::before {
        content: '▸';
        color: var(--accent);
      }
      details[open] summary::before {
        content: '▾';
      }
      section {
        padding-block: 0.6rem;
      }
      .pair {
        padding: 0.6rem 0;
      }
    `,
  ];

  override render(): unknown {
    const { audio, video } = this.draft;
    const { fields: f, timing, placeholders: p } = t.editor;
    const set = [
      [f.soundDelay, audio.delay_ms] as const,
      [f.popupDelay, video.delay_ms] as const,
      [f.timeout, video.timeout_ms] as const,
    ].filter(([, time]) => time !== 0);
    const told = set.map(([label, time]) => timing.at(label, seconds(time))).join(' · ');
    return html`<section class="card">
      <details>
        <summary>
          <h2>${timing.title}</h2>
          <span class="hint">${told || timing.automatic}</span>
        </summary>
        <div class="pair">
          ${this.seconds('audio.delay_ms', f.soundDelay, p.soundDelay, audio.delay_ms, (value) =>
            this.changeAudio({ delay_ms: value }),
          )}
          ${this.seconds('video.delay_ms', f.popupDelay, p.popupDelay, video.delay_ms, (value) =>
            this.changeVideo({ delay_ms: value }),
          )}
          ${this.seconds('video.timeout_ms', f.timeout, p.timeout, video.timeout_ms, (value) =>
            this.changeVideo({ timeout_ms: value }),
          )}
        </div>
      </details>
    </section>`;
  }
}
