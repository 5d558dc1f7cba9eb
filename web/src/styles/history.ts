// The history: a table, which becomes a list of cards on a phone.

import { css } from 'lit';

export const historyStyles = css`
  .filter {
    display: grid;
    grid-template-columns: 2fr 1fr 1fr;
    gap: 0.75rem;
    margin-bottom: 1.25rem;
  }
  table {
    width: 100%;
    border-collapse: separate;
    border-spacing: 0;
    overflow: hidden;
  }
  th,
  td {
    padding: 0.8rem 1.1rem;
    text-align: left;
    vertical-align: top;
    border-top: 1px solid var(--line);
  }
  thead th {
    border-top: 0;
    color: var(--ink-soft);
    font-size: 0.85rem;
    font-weight: 600;
  }
  .when,
  .took {
    white-space: nowrap;
    font-variant-numeric: tabular-nums;
    color: var(--ink-soft);
  }
  .what {
    min-width: 8.5rem;
    font-weight: 600;
    overflow-wrap: anywhere;
  }
  .again {
    width: 1%;
  }
  .again .icon-button {
    margin: -0.5rem 0;
  }
  .reason {
    margin-top: 0.35rem;
    color: var(--bad);
    overflow-wrap: anywhere;
  }
  .more {
    display: grid;
    justify-items: center;
    margin-top: 1.25rem;
  }
  @media (max-width: 1099px) {
    th,
    td {
      padding: 0.8rem 0.7rem;
    }
  }
  @media (max-width: 699px) {
    .filter {
      grid-template-columns: 1fr 1fr;
    }
    .filter sl-input {
      grid-column: 1 / -1;
    }
    thead {
      position: absolute;
      width: 1px;
      height: 1px;
      overflow: hidden;
      clip-path: inset(50%);
    }
    tr {
      display: grid;
      grid-template-columns: 1fr auto;
      gap: 0.1rem 0.75rem;
      padding: 0.9rem 1rem;
      border-top: 1px solid var(--line);
    }
    tr:first-child {
      border-top: 0;
    }
    td,
    td.what {
      min-width: 0;
      padding: 0;
      border: 0;
    }
    .what {
      order: 1;
    }
    .outcome {
      order: 2;
    }
    .when {
      order: 3;
      font-size: 0.875rem;
    }
    .took {
      order: 4;
      text-align: right;
      font-size: 0.875rem;
    }
    .where {
      order: 5;
      font-size: 0.875rem;
      color: var(--ink-soft);
    }
    .again {
      order: 6;
      width: auto;
      justify-self: end;
    }
  }
`;
