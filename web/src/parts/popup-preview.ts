// The popup as a screen would show it.

import { LitElement, css, html, nothing } from 'lit';
import { customElement, property } from 'lit/decorators.js';
import type { AnnouncementBody } from '../api/objects';
import { seconds } from '../model/format';
import { Following, store } from '../store/live';
import { shared } from '../styles/shared';
import { t } from '../texts/page';
import './media-image';

const STANDING = 30000; // of a popup without a time of its own

@customElement('popup-preview')
export class PopupPreview extends LitElement {
  static override styles = [
    shared,
    css`
      :host {
        display: block;
      }
      .screen {
        display: grid;
        place-items: center;
        aspect-ratio: 16 / 10;
        padding: 5%;
        border: 8px solid #23292f;
        border-radius: 18px;
        background: radial-gradient(120% 90% at 50% 0%, #17222b, #0b0e12 70%);
        color: #f4f6f8;
        overflow: hidden;
      }
      .popup {
        display: flex;
        flex-direction: column;
        width: 100%;
        max-height: 100%;
        min-height: 0;
        border: 1px solid #33404c;
        border-radius: 14px;
        background: #151b22;
        overflow: hidden;
      }
      .content {
        display: flex;
        align-items: center;
        justify-content: center;
        gap: 1rem;
        min-height: 0;
        padding: 1rem 1.2rem;
        flex: 1;
      }
      media-image {
        flex: 0 1 42%;
        height: 7.5rem;
      }
      .message {
        flex: 1 1 50%;
        font-size: 1.3rem;
        font-weight: 600;
        line-height: 1.25;
        text-align: center;
        white-space: pre-line;
        overflow-wrap: anywhere;
        max-height: 8rem;
        overflow: hidden;
      }
      footer {
        display: flex;
        align-items: center;
        gap: 1rem;
        padding: 0.7rem 1rem;
        border-top: 1px solid #33404c;
      }
      .track {
        flex: 1;
        height: 4px;
        border-radius: 2px;
        background: #33404c;
      }
      .track i {
        display: block;
        width: 70%;
        height: 100%;
        border-radius: 2px;
        background: #ffc857;
      }
      .time {
        color: #aab4be;
        font-size: 0.85rem;
      }
      .ok {
        padding: 0.35rem 1.5rem;
        border-radius: 10px;
        background: #ffc857;
        color: #1d1500;
        font-weight: 700;
      }
      .rest {
        color: #aab4be;
        text-align: center;
      }
    `,
  ];

  @property({ attribute: false }) announcement!: AnnouncementBody;

  constructor() {
    super();
    new Following(this);
  }

  override render(): unknown {
    const { text, image, variable, ok_button: hasOk, timeout_ms: timeout } = this.announcement.video;
    const value =
      variable &&
      store.variables.find((one) => one.device === variable.device && one.variable === variable.variable)?.value;
    const message = variable ? (value ?? '') : text;
    const isShown = Boolean(message || image || variable);
    return html`<figure role="img" aria-label=${isShown ? t.preview.label(message) : t.preview.none}>
      <div class="screen" aria-hidden="true">
        ${
          isShown
            ? html`<div class="popup">
                <div class="content">
                  ${image ? html`<media-image name=${image}></media-image>` : nothing}
                  ${message ? html`<div class="message" dir="auto">${message}</div>` : nothing}
                </div>
                <footer>
                  <span class="track"><i></i></span
                  ><span class="time">${seconds(timeout || STANDING)}</span
                  >${hasOk ? html`<span class="ok">OK</span>` : nothing}
                </footer>
              </div>`
            : html`<p class="rest">${t.preview.none}</p>`
        }
      </div>
    </figure>`;
  }
}
