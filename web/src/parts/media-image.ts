// An image of the media folder, or its thumbnail, which need the token that an image element cannot send; or one from
// the web.

import { LitElement, css, html, nothing, type PropertyValues } from 'lit';
import { customElement, property, state } from 'lit/decorators.js';
import { fetchFile, mediaAddress, Problem, thumbnailAddress } from '../api/request';
import { isImageAddress } from '../model/draft';
import { Reading } from '../store/live';

@customElement('media-image')
export class MediaImage extends LitElement {
  static override styles = css`
    :host {
      display: block;
    }
    img {
      display: block;
      width: 100%;
      height: 100%;
      object-fit: var(--fit, contain);
    }
  `;

  @property() name = '';
  @property() version = '';
  @property({ type: Boolean }) small = false;
  @state() private source = '';
  private isMissed = false; // for want of a connection

  constructor() {
    super();
    new Reading(this, () => {
      if (this.isMissed) void this.load(this.name);
    });
  }

  override willUpdate(changed: PropertyValues): void {
    if (changed.has('name') || changed.has('version')) void this.load(this.name);
  }

  override disconnectedCallback(): void {
    super.disconnectedCallback();
    this.release();
  }

  private release(): void {
    if (this.source.startsWith('blob:')) URL.revokeObjectURL(this.source);
    this.source = '';
  }

  private async load(name: string): Promise<void> {
    this.release();
    this.isMissed = false;
    if (/^https?:\/\//i.test(name)) {
      this.source = name;
      return;
    }
    if (!isImageAddress(name)) return;
    try {
      const address = this.small ? thumbnailAddress(name) : mediaAddress(name);
      const source = URL.createObjectURL(await fetchFile(address));
      if (name === this.name) this.source = source;
      else URL.revokeObjectURL(source);
    } catch (problem) {
      // Where there is none of this name nothing is shown, as on a screen.
      this.isMissed = problem instanceof Problem && problem.status === 0;
    }
  }

  override render(): unknown {
    return this.source
      ? html`<img src=${this.source} alt="" referrerpolicy="no-referrer" @error=${() => this.release()} />`
      : nothing;
  }
}
