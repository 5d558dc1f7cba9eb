// Plays a sound of the media folder in this browser, and stops it.

import { LitElement, css, html } from 'lit';
import { customElement, property, state } from 'lit/decorators.js';
import { listen, stop } from '../model/sound';
import { shared } from '../styles/shared';
import { t } from '../texts/page';
import { attempt } from './ui-toasts';
import { named } from './named';

@customElement('listen-button')
export class ListenButton extends LitElement {
  static override styles = [
    shared,
    css`
      :host {
        display: inline-block;
      }
    `,
  ];

  @property() file = ''; // with its ending
  @state() private isPlaying = false;

  override disconnectedCallback(): void {
    super.disconnectedCallback();
    if (this.isPlaying) stop();
  }

  override render(): unknown {
    return html`<sl-button ?disabled=${!this.file} @click=${this.toggle}>
      <ui-icon slot="prefix" name=${this.isPlaying ? 'stop' : 'play'}></ui-icon>${named(
        this.isPlaying ? t.media.stop : t.media.listen,
        this.isPlaying ? t.media.stopLabel(this.file) : t.media.listenLabel(this.file),
      )}</sl-button
    >`;
  }

  private toggle(): void {
    if (this.isPlaying) {
      stop();
      return;
    }
    this.isPlaying = true;
    void attempt(() =>
      listen(this.file, () => {
        this.isPlaying = false;
      }),
    ).then((isWell) => {
      if (!isWell) stop();
    });
  }
}
