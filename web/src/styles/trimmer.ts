// The picture of a sound with the two handles over it.

import { css } from 'lit';

export const trimmerStyles = css`
  :host {
    display: grid;
    grid-template-columns: minmax(0, 1fr);
    gap: 0.75rem;
    --thumb: 22px;
  }
  .wave {
    position: relative;
    height: 6.5rem;
  }
  /* A range's thumb never leaves its track: the picture is narrower by half a thumb at each side. */
  svg {
    position: absolute;
    inset: 0 calc(var(--thumb) / 2);
    width: calc(100% - var(--thumb));
    height: 100%;
    border-radius: 6px;
    background: var(--sunk);
    cursor: grab;
    touch-action: pan-y;
  }
  svg:active {
    cursor: grabbing;
  }
  rect {
    fill: var(--bar-sound);
  }
  .kept {
    fill: var(--accent-soft);
  }
  .cut {
    fill: var(--sunk);
    opacity: 0.75;
  }
  .now {
    fill: var(--ink);
  }
  input {
    position: absolute;
    inset: 0;
    width: 100%;
    height: 100%;
    margin: 0;
    appearance: none;
    background: transparent;
    pointer-events: none;
  }
  input::-webkit-slider-runnable-track {
    height: 100%;
    background: transparent;
  }
  input::-moz-range-track {
    height: 100%;
    background: transparent;
  }
  input::-webkit-slider-thumb {
    appearance: none;
    width: var(--thumb);
    height: 6.5rem;
    border: 0;
    border-radius: 8px;
    background: linear-gradient(var(--on-accent), var(--on-accent)) center / 3px 1.6rem no-repeat var(--accent);
    cursor: ew-resize;
    pointer-events: auto;
  }
  input::-moz-range-thumb {
    width: var(--thumb);
    height: 6.5rem;
    border: 0;
    border-radius: 8px;
    background: linear-gradient(var(--on-accent), var(--on-accent)) center / 3px 1.6rem no-repeat var(--accent);
    cursor: ew-resize;
    pointer-events: auto;
  }
  input:focus-visible {
    outline: none;
  }
  input:focus-visible::-webkit-slider-thumb {
    outline: 3px solid var(--ink);
    outline-offset: 1px;
  }
  input:focus-visible::-moz-range-thumb {
    outline: 3px solid var(--ink);
    outline-offset: 1px;
  }
  .line {
    display: flex;
    flex-wrap: wrap;
    align-items: center;
    gap: 0.5rem 1rem;
  }
  .times {
    display: flex;
    flex-wrap: wrap;
    gap: 0 1rem;
    font-variant-numeric: tabular-nums;
  }
`;
