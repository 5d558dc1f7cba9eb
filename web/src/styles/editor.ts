// The editor: fields and, beside or below them, what they make.

import { css } from 'lit';

export const editorStyles = css`
  .head {
    gap: 0.5rem 0.75rem;
  }
  form {
    display: grid;
    grid-template-columns: minmax(0, 1fr);
    gap: 1.25rem;
  }
  .fields,
  aside {
    display: grid;
    grid-template-columns: minmax(0, 1fr);
    gap: 1.25rem;
    align-content: start;
    min-width: 0;
  }
  aside .card {
    display: grid;
    grid-template-columns: minmax(0, 1fr);
    gap: 0.9rem;
    padding: 1.25rem;
  }
  .name {
    display: grid;
    grid-template-columns: repeat(auto-fit, minmax(min(100%, 14rem), 1fr));
    align-items: start;
    gap: 1.1rem;
    padding: 1.25rem;
  }
  .lack:empty {
    display: none;
  }
  .lack {
    display: flex;
    flex: 1 1 14rem;
    align-items: center;
    gap: 0.6rem;
    margin-right: auto;
  }
  .lack ui-icon {
    flex: none;
    color: var(--warning);
  }
  sl-input::part(form-control-label) {
    font-weight: 500;
    margin-bottom: 0.3rem;
  }
  sl-input.invalid::part(base) {
    border-color: var(--bad);
  }
  sl-input.invalid::part(form-control-help-text) {
    color: var(--bad);
    font-weight: 500;
  }
  footer {
    position: sticky;
    z-index: 10;
    bottom: calc(4.2rem + var(--now, 0rem));
    display: flex;
    flex-wrap: wrap;
    justify-content: flex-end;
    align-items: center;
    gap: 0.75rem;
    padding: 0.75rem 1rem;
    border: 1px solid var(--line);
    border-radius: var(--radius);
    background: var(--card);
    box-shadow: 0 4px 20px rgb(0 0 0 / 12%);
  }
  footer .problem {
    flex: 1 1 100%;
  }
  footer sl-button {
    min-width: 7rem;
  }
  @media (max-width: 699px) {
    footer {
      gap: 0.5rem;
      padding: 0.6rem;
    }
    /* The arrow above does the same. */
    footer .cancel {
      display: none;
    }
    footer sl-button {
      flex: 1 1 auto;
      min-width: max-content;
    }
    .lack {
      flex-basis: 100%;
    }
  }
  @media (min-width: 700px) {
    footer {
      bottom: calc(1rem + var(--now, 0rem));
    }
  }
  @media (min-width: 1100px) {
    form {
      grid-template-columns: minmax(0, 1.1fr) minmax(0, 1fr);
    }
    aside {
      position: sticky;
      top: 1.5rem;
      align-self: start;
    }
    footer {
      grid-column: 1 / -1;
    }
  }
`;
