import { compareNames } from '../Library/names.js';
import { barsOf, lengthText, signatureText, tempoText } from './numbers.js';

const kPausePerWork = 5;
const kMostPause = 1000; // milliseconds

/**
 * The list of loops. Rows appear as headers are read; only one of their buttons is in the order of
 * the tab key, and the arrow keys go from row to row.
 */
export class LoopTable {
  #table;
  #body;
  #rows = []; // {entry, row, button, text} in the order of arrival
  #entries = new Map(); // by their rows
  #shown = 0; // rows that the filter lets through
  #current = null;
  #pending = [];
  #pause = 0; // milliseconds between two changes
  #sort = { key: null, descending: false };
  #filter = () => true;
  #onOpen;
  #onChange;

  /**
   * @param {HTMLTableElement} table with a button[data-sort] in each sortable header
   * @param {(entry) => void} onOpen a row was activated
   * @param {(counts: {shown: number, all: number}) => void} onChange
   */
  constructor(table, onOpen, onChange) {
    this.#table = table;
    this.#body = table.tBodies[0];
    this.#onOpen = onOpen;
    this.#onChange = onChange;
    this.#body.addEventListener('click', (event) => {
      const row = event.target.closest('tr');
      if (row) {
        this.#onOpen(this.#entryOf(row));
      }
    });
    this.#body.addEventListener('keydown', (event) => this.#onKey(event));
    for (const button of table.querySelectorAll('button[data-sort]')) {
      button.onclick = () => this.#sortBy(button.dataset.sort);
    }
  }

  /** @param {{path: string, header: {kind, info, text}}} entry */
  add(entry) {
    this.#pending.push(entry);
    if (this.#pending.length === 1) {
      setTimeout(() => requestAnimationFrame(() => this.#appendPending()), this.#pause);
    }
  }

  /** Marks the loop that is open. */
  setCurrent(entry) {
    this.#flush();
    this.#current?.row.removeAttribute('aria-current');
    this.#current = this.#rows.find((item) => item.entry === entry) ?? null;
    this.#current?.row.setAttribute('aria-current', 'true');
    this.#setTabStop();
  }

  /** Shows the loops that `words` fits: parts of path and texts, and ranges of tempo (90..100). */
  setFilter(words) {
    this.#flush();
    const tests = words.toLowerCase().split(/\s+/).filter(Boolean).map(testOf);
    this.#filter = (item) => tests.every((test) => test(item));
    for (const item of this.#rows) {
      item.row.hidden = !this.#filter(item);
    }
    this.#shown = this.#visibleRows().length;
    this.#setTabStop();
    this.report();
  }

  // Headers come by the hundred a second, and the browser lays all rows out again for each change. Rows
  // wait for each other the longer the more that takes, so that the page stays free most of the time.
  #appendPending() {
    const start = performance.now();
    this.#flush();
    this.report();
    setTimeout(() => {
      this.#pause = Math.min(kMostPause, kPausePerWork * (performance.now() - start));
    });
  }

  #flush() {
    const items = this.#pending.map((entry) => makeItem(entry));
    this.#pending = [];
    this.#rows.push(...items);
    for (const item of items) {
      item.row.hidden = !this.#filter(item);
      this.#entries.set(item.row, item.entry);
      this.#shown += item.row.hidden ? 0 : 1;
    }
    if (this.#sort.key) {
      this.#order();
    } else {
      this.#body.append(...items.map((item) => item.row));
    }
  }

  /** Tells onChange how many rows there are. */
  report() {
    this.#onChange({ shown: this.#shown, all: this.#rows.length });
  }

  #sortBy(key) {
    this.#sort = { key, descending: this.#sort.key === key && !this.#sort.descending };
    this.#order();
    for (const button of this.#table.querySelectorAll('button[data-sort]')) {
      const isKey = button.dataset.sort === key;
      const direction = this.#sort.descending ? 'descending' : 'ascending';
      button.closest('th').setAttribute('aria-sort', isKey ? direction : 'none');
    }
  }

  #order() {
    const value = kSortValues[this.#sort.key];
    const sign = this.#sort.descending ? -1 : 1;
    const sorted = this.#rows.toSorted((a, b) => sign * compare(value(a.entry), value(b.entry)));
    this.#body.replaceChildren(...sorted.map((item) => item.row));
  }

  #onKey(event) {
    const step = { ArrowDown: 1, ArrowUp: -1 }[event.key];
    if (step) {
      event.preventDefault();
      const rows = this.#visibleRows();
      const at = rows.indexOf(event.target.closest('tr')) + step;
      rows[at]?.querySelector('button').focus();
    }
  }

  #visibleRows() {
    return [...this.#body.rows].filter((row) => !row.hidden);
  }

  #entryOf(row) {
    return this.#entries.get(row);
  }

  #setTabStop() {
    const isVisible = this.#current && !this.#current.row.hidden;
    const stop = isVisible ? this.#current.row : this.#visibleRows()[0];
    for (const { row, button } of this.#rows) {
      button.tabIndex = row === stop ? 0 : -1;
    }
  }
}

const kSortValues = {
  name: (entry) => entry.path,
  tempo: (entry) => entry.header.info.storedTempo,
  bars: (entry) => entry.header.info.quarters,
};

function compare(a, b) {
  return typeof a === 'string' ? compareNames(a, b) : a - b;
}

function testOf(word) {
  const range = /^(\d*\.?\d*)\.\.(\d*\.?\d*)$/.exec(word);
  if (range) {
    const least = range[1] ? Number(range[1]) : 0;
    const most = range[2] ? Number(range[2]) : Infinity;
    return ({ entry }) => {
      const tempo = entry.header.info.storedTempo;
      return tempo >= least && tempo <= most;
    };
  }
  return ({ text }) => text.includes(word);
}

// With roles, since not every browser knows a table that is laid out as something else.
function makeItem(entry) {
  const { info, kind, text } = entry.header;
  const names = entry.path.split('/');
  const button = element('button', names.pop(), { type: 'button', tabIndex: -1 });
  const name = element('th', '', { scope: 'row', role: 'rowheader' });
  name.append(button);
  const about = [names.join('/'), text.split('\n').join(', ')].filter(Boolean).join(' · ');
  if (about) {
    name.append(element('span', about, { className: 'about', title: text || about }));
  }
  const { bars, beats } = barsOf(info);
  const cells = [tempoText(info.storedTempo), beats ? `${bars} + ${beats}` : String(bars),
    signatureText(info), kind].map((content) => element('td', content, { role: 'cell' }));
  cells[1].title = lengthText(info);
  const row = element('tr', '', { role: 'row' });
  row.append(name, ...cells);
  return { entry, row, button, text: `${entry.path}\n${text}\n${kind}`.toLowerCase() };
}

function element(tag, text, properties = {}) {
  return Object.assign(document.createElement(tag), { textContent: text }, properties);
}
