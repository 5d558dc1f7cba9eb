// The popup as a screen shows it: what a screen's page is made of, in a window of the screen's size, made smaller.

import { LitElement, css, html, nothing } from 'lit';
import { customElement, property, query, state } from 'lit/decorators.js';
import { mediaAddress } from '../api/request';
import type { AnnouncementBody, Popup } from '../api/objects';
import { sizesFor, type Size } from '../model/screens';
import { PopupFace, popupIn } from '../navigator/PopupFace';
import baseStyle from '../navigator/base.css?url';
import popupStyle from '../navigator/popup.css?url';
import { Following, store } from '../store/live';
import { shared } from '../styles/shared';
import { t } from '../texts/page';
import screenPage from '../../navigator.html?raw';

const STANDING = 30000; // of a popup without a time of its own
const HIGHEST = 460; // of the picture, in CSS pixels

@customElement('popup-preview')
export class PopupPreview extends LitElement {
  static override styles = [
    shared,
    css`
      :host {
        display: grid;
        grid-template-columns: minmax(0, 1fr);
        gap: 0.75rem;
      }
      .frame {
        position: relative;
        justify-self: center;
        overflow: hidden;
        border: 6px solid #23292f;
        border-radius: 14px;
        box-sizing: content-box;
      }
      iframe {
        display: block;
        border: 0;
        transform-origin: 0 0;
        pointer-events: none;
      }
      iframe.dark {
        color-scheme: dark;
      }
      iframe.light {
        color-scheme: light;
      }
      .rest {
        position: absolute;
        inset: 0;
        display: grid;
        place-items: center;
        padding: 1rem;
        background: #0b0e12;
        color: #c4ccd4;
        text-align: center;
      }
      .choices {
        display: grid;
        grid-template-columns: repeat(auto-fit, minmax(min(100%, 8rem), 1fr));
        gap: 0.75rem;
      }
    `,
  ];

  @property({ attribute: false }) announcement!: AnnouncementBody;
  @state() private chosen = ''; // the first one, until somebody chooses
  @state() private colours: 'dark' | 'light' = 'dark';
  @query('iframe') private readonly frame!: HTMLIFrameElement;
  @query('.frame') private readonly edge!: HTMLElement;
  private face: PopupFace | null = null;
  private drawn = '';
  private readonly resizing = new ResizeObserver(() => this.scale());

  constructor() {
    super();
    new Following(this);
  }

  override connectedCallback(): void {
    super.connectedCallback();
    this.resizing.observe(this);
  }

  override disconnectedCallback(): void {
    super.disconnectedCallback();
    this.resizing.disconnect();
    this.face = null; // a frame that is taken out of the page loses what it holds
  }

  override updated(): void {
    this.scale();
    if (this.face) this.draw(this.face);
  }

  private loaded(): void {
    this.face = faceIn(this.frame);
    this.drawn = '';
    this.requestUpdate();
  }

  private get sizes(): Size[] {
    return sizesFor(this.announcement, store.screens);
  }

  private get size(): Size {
    const [first] = this.sizes;
    return (
      this.sizes.find(({ key }) => key === this.chosen) ?? first ?? { key: '', name: '', width: 1280, height: 800 }
    );
  }

  private scale(): void {
    if (!this.hasUpdated) return;
    const { width, height } = this.size;
    const share = Math.min((this.clientWidth - 12) / width, HIGHEST / height);
    this.frame.style.transform = `scale(${share})`;
    this.edge.style.width = `${width * share}px`;
    this.edge.style.height = `${height * share}px`;
  }

  private draw(face: PopupFace): void {
    const popup = this.popup();
    const drawn = JSON.stringify([popup, this.size]);
    if (drawn === this.drawn) return;
    this.drawn = drawn;
    face.hide();
    if (!popup) return;
    face.show(popup);
    face.tellRemaining(popup.remaining_ms, 1);
  }

  /** What a screen would be told of it; null where there is nothing to show. */
  private popup(): Popup | null {
    const { text, image, variable, ok_button, timeout_ms: timeout } = this.announcement.video;
    if (!text && !image && !variable) return null;
    const value =
      variable &&
      store.variables.find((one) => one.device === variable.device && one.variable === variable.variable)?.value;
    return {
      number: 1,
      message: variable ? (value ?? '') : text,
      image: image && !/^https?:/i.test(image) ? mediaAddress(image) : image,
      ok_button,
      remaining_ms: timeout || STANDING,
      ends: '',
    };
  }

  override render(): unknown {
    const popup = this.popup();
    const { width, height } = this.size;
    return html`<figure role="img" aria-label=${popup ? t.preview.label(popup.message) : t.preview.none}>
        <div class="frame">
          <iframe
            class=${this.colours}
            srcdoc="<!doctype html>"
            @load=${this.loaded}
            width=${width}
            height=${height}
            title=${t.preview.title}
            aria-hidden="true"
            tabindex="-1"
            inert
          ></iframe>
          ${popup ? nothing : html`<p class="rest">${t.preview.none}</p>`}
        </div>
      </figure>
      ${this.renderChoices()}`;
  }

  private renderChoices(): unknown {
    const valueOf = (event: Event): string => (event.target as HTMLSelectElement).value;
    const chosen = this.size.key;
    const sizes = this.sizes.map(
      ({ key, name }) => html`<option value=${key} .selected=${key === chosen}>${name}</option>`,
    );
    const size = (event: Event): void => {
      this.chosen = valueOf(event);
    };
    const colours = (event: Event): void => {
      this.colours = valueOf(event) as 'dark' | 'light';
    };
    return html`<div class="choices">
      <select aria-label=${t.preview.size} @change=${size}>
        ${sizes}
      </select>
      <select aria-label=${t.preview.colours} @change=${colours}>
        <option value="dark">${t.theme.dark}</option>
        <option value="light">${t.theme.light}</option>
      </select>
    </div>`;
  }
}

/** Puts what navigator.html has of the popup into the frame, with the styles of a screen's page. */
function faceIn(frame: HTMLIFrameElement): PopupFace {
  const inside = frame.contentDocument;
  const popup = new DOMParser().parseFromString(screenPage, 'text/html').getElementById('popup');
  if (!inside || !popup) throw new Error('there is no popup to show');
  inside.body.append(inside.importNode(popup, true));
  const elements = popupIn(inside);
  elements.ok.tabIndex = -1;
  const face = new PopupFace(elements);
  for (const href of [baseStyle, popupStyle]) {
    const link = inside.createElement('link');
    link.rel = 'stylesheet';
    link.href = href;
    link.addEventListener('load', () => face.layOut());
    inside.head.append(link);
  }
  return face;
}
