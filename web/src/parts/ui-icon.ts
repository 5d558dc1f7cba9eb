// The pictures of buttons and places, bundled. They say nothing by themselves: what they stand beside does.

import bell from 'bootstrap-icons/icons/bell.svg?raw';
import stop from 'bootstrap-icons/icons/stop-fill.svg?raw';
import check from 'bootstrap-icons/icons/check-lg.svg?raw';
import chevronDown from 'bootstrap-icons/icons/chevron-down.svg?raw';
import clock from 'bootstrap-icons/icons/clock-history.svg?raw';
import copy from 'bootstrap-icons/icons/copy.svg?raw';
import display from 'bootstrap-icons/icons/display.svg?raw';
import download from 'bootstrap-icons/icons/download.svg?raw';
import exclamation from 'bootstrap-icons/icons/exclamation-triangle.svg?raw';
import house from 'bootstrap-icons/icons/house.svg?raw';
import image from 'bootstrap-icons/icons/image.svg?raw';
import journal from 'bootstrap-icons/icons/list-ul.svg?raw';
import chat from 'bootstrap-icons/icons/chat-left-text.svg?raw';
import megaphone from 'bootstrap-icons/icons/megaphone.svg?raw';
import up from 'bootstrap-icons/icons/arrow-up.svg?raw';
import down from 'bootstrap-icons/icons/arrow-down.svg?raw';
import microphone from 'bootstrap-icons/icons/mic.svg?raw';
import moon from 'bootstrap-icons/icons/moon-stars.svg?raw';
import note from 'bootstrap-icons/icons/music-note-beamed.svg?raw';
import pencil from 'bootstrap-icons/icons/pencil.svg?raw';
import play from 'bootstrap-icons/icons/play-fill.svg?raw';
import plus from 'bootstrap-icons/icons/plus-lg.svg?raw';
import search from 'bootstrap-icons/icons/search.svg?raw';
import speaker from 'bootstrap-icons/icons/volume-up.svg?raw';
import sun from 'bootstrap-icons/icons/sun.svg?raw';
import half from 'bootstrap-icons/icons/circle-half.svg?raw';
import trash from 'bootstrap-icons/icons/trash3.svg?raw';
import upload from 'bootstrap-icons/icons/cloud-arrow-up.svg?raw';
import exit from 'bootstrap-icons/icons/box-arrow-right.svg?raw';
import back from 'bootstrap-icons/icons/arrow-left.svg?raw';
import open from 'bootstrap-icons/icons/box-arrow-up-right.svg?raw';
import star from 'bootstrap-icons/icons/star.svg?raw';
import starred from 'bootstrap-icons/icons/star-fill.svg?raw';
import close from 'bootstrap-icons/icons/x-lg.svg?raw';
import { LitElement, css, html } from 'lit';
import { customElement, property } from 'lit/decorators.js';
import { unsafeSVG } from 'lit/directives/unsafe-svg.js';

const icons = {
  bell,
  stop,
  check,
  chevronDown,
  clock,
  copy,
  display,
  download,
  exclamation,
  house,
  image,
  journal,
  chat,
  megaphone,
  up,
  down,
  microphone,
  moon,
  note,
  pencil,
  play,
  plus,
  search,
  speaker,
  sun,
  half,
  trash,
  upload,
  exit,
  back,
  open,
  close,
  star,
  starred,
};

export type IconName = keyof typeof icons;

@customElement('ui-icon')
export class UiIcon extends LitElement {
  static override styles = css`
    :host {
      display: inline-grid;
      place-items: center;
      line-height: 0;
    }
    svg {
      width: 1em;
      height: 1em;
    }
  `;

  @property() name: IconName = 'bell';

  override connectedCallback(): void {
    super.connectedCallback();
    this.setAttribute('aria-hidden', 'true');
  }

  override render(): unknown {
    return html`${unsafeSVG(icons[this.name])}`;
  }
}
