// A table of any number of rows of one height. Only the rows that can be seen are in the document. For a screen reader
// it is a grid: the number of rows is that of all, each row has its index, and the element that keeps the focus names
// the active cell.
//
// Keys: arrows, Page Up and Page Down, Home and End (first and last row), Enter and Space (opens a row, sorts a
// column).
//
// createGrid({label, columns, layout, open, sort}) with columns as in columns.js; `layout` is {twoLines}, a width in
// rem; open(record) and sort(column) are called by mouse and keyboard. Returns:
//   element              for the page; remove() ends it
//   show(records)        replaces the list; the active record stays active where it is in the new list
//   change(records)      these have changed: drawn at the next frame if they are on the screen, with a short highlight
//   mark(sort)           shows {column, descending} in the heading
//   position, restore(position)   scroll offset and active record, to come back to the same place

import {make, setAttribute, everyFrame} from './dom.js';
import {GridHead} from './grid-head.js';
import {GridRows} from './grid-rows.js';

const Spare = 6;
let grids = 0;

// The cell that a key activates, as [row, column]; -1 is the row of the heading.
const Moves = {
  ArrowUp: ({row, column}) => [row - 1, column],
  ArrowDown: ({row, column}) => [row + 1, column],
  ArrowLeft: ({row, column}) => [row, column - 1],
  ArrowRight: ({row, column}) => [row, column + 1],
  PageUp: ({row, column, page}) => [Math.max(0, row - page), column],
  PageDown: ({row, column, page}) => [row + page, column],
  Home: ({column}) => [0, column],
  End: ({column, last}) => [last, column],
};

class Grid {
  #columns;
  #layout;
  #open;
  #sort;
  #cellId;
  #head;
  #rows;
  #records = [];
  #shown;
  #rowHeight = 32;
  #active = {row: -1, column: 0};
  #observer = new ResizeObserver(everyFrame(() => this.#measure()));

  constructor({label, columns, layout, open, sort}) {
    const prefix = `g${++grids}`;
    this.#columns = columns;
    this.#shown = columns;
    this.#layout = layout;
    this.#open = open;
    this.#sort = sort;
    this.#cellId = (row, column) => (row < 0 ? `${prefix}h${column}` : `${prefix}r${row}c${column}`);
    this.#head = new GridHead(this.#cellId);
    this.#rows = new GridRows(this.#cellId);
    this.element = make('div.grid', {
      role: 'grid', tabindex: 0, 'aria-label': label, 'aria-readonly': 'true',
      onkeydown: (event) => this.#press(event), onclick: (event) => this.#click(event),
      onscroll: everyFrame(() => this.#draw()),
      onfocus: everyFrame(() => this.#activate(this.#active.row, this.#active.column, false)),
    }, make('div.grid-top', {role: 'rowgroup'}, this.#head.element), this.#rows.element);
    this.#observer.observe(this.element);
  }

  show(records) {
    const record = this.#records[this.#active.row];
    this.#records = records;
    const index = record ? records.indexOf(record) : this.#active.row;
    this.#active.row = Math.min(index, records.length - 1);
    this.#resize();
    this.#draw();
  }

  change(records) {
    this.#rows.change(records);
  }

  mark(sort) {
    this.#head.mark(sort);
  }

  get position() {
    return {top: this.element.scrollTop, record: this.#records[this.#active.row]};
  }

  restore({top, record}) {
    this.#measure();
    this.element.scrollTop = top;
    this.#active.row = record ? this.#records.indexOf(record) : -1;
    this.#draw();
  }

  remove() {
    this.#observer.disconnect();
    this.#rows.remove();
    this.element.remove();
  }

  // The row heights and columns of the present width. Rows are made again only if the columns are others.
  #measure() {
    const rem = parseFloat(getComputedStyle(document.documentElement).fontSize);
    const width = this.element.clientWidth / rem;
    const twoLines = width < this.#layout.twoLines;
    const columns = this.#columns.filter((column) => twoLines || width >= column.from);
    this.element.classList.toggle('two-lines', twoLines);
    this.#rowHeight = Math.round((twoLines ? 3.6 : 2) * rem);
    this.element.style.setProperty('--row', `${this.#rowHeight}px`);
    this.element.style.setProperty('--columns', columns.map((column) => column.width).join(' '));
    const number = Math.ceil(this.element.clientHeight / this.#rowHeight) + 2 * Spare;
    if (columns.length !== this.#shown.length || number > this.#rows.number) {
      this.#shown = columns;
      setAttribute(this.element, 'aria-colcount', columns.length);
      this.#head.make(columns);
      this.#rows.make(columns, number);
    }
    this.#resize();
    this.#draw();
  }

  #resize() {
    setAttribute(this.element, 'aria-rowcount', this.#records.length + 1);
    this.#rows.resize(this.#rowHeight, this.#records.length);
  }

  #draw() {
    if (this.#rows.number) {
      this.#rows.show(this.#records, Math.max(0, Math.floor(this.element.scrollTop / this.#rowHeight) - Spare));
      this.#pointOut();
    }
  }

  #pointOut() {
    const {row, column} = this.#active;
    this.#rows.highlight(row);
    this.element.querySelector('.grid-cell.active')?.classList.remove('active');
    const cell = document.getElementById(this.#cellId(row, column));
    cell?.classList.add('active');
    setAttribute(this.element, 'aria-activedescendant', cell ? cell.id : null);
  }

  // The height in px that is left for rows.
  get #room() {
    return this.element.clientHeight - this.#head.height;
  }

  #reveal(index) {
    const top = index * this.#rowHeight;
    if (top < this.element.scrollTop) {
      this.element.scrollTop = top;
    } else if (top + this.#rowHeight > this.element.scrollTop + this.#room) {
      this.element.scrollTop = top + this.#rowHeight - this.#room;
    }
  }

  #activate(row, column, scroll = true) {
    const least = this.#head.height ? -1 : 0;
    this.#active = {
      row: Math.max(least, Math.min(this.#records.length - 1, row)),
      column: Math.max(0, Math.min(this.#shown.length - 1, column)),
    };
    if (scroll && this.#active.row >= 0) {
      this.#reveal(this.#active.row);
    }
    this.#draw();
  }

  #press(event) {
    if (event.ctrlKey || event.altKey || event.metaKey) {
      return;
    }
    const move = Moves[event.key];
    if (move) {
      event.preventDefault();
      const page = Math.max(1, Math.floor(this.#room / this.#rowHeight) - 1);
      this.#activate(...move({...this.#active, page, last: this.#records.length - 1}));
    } else if (event.key === 'Enter' || event.key === ' ') {
      event.preventDefault();
      this.#enter();
    }
  }

  #enter() {
    const {row, column} = this.#active;
    if (row < 0) {
      this.#sort(this.#shown[column].key);
    } else if (this.#records[row]) {
      this.#open(this.#records[row]);
    }
  }

  #click(event) {
    const title = event.target.closest('[role="columnheader"]');
    if (title) {
      this.#sort(title.dataset.column);
      return;
    }
    const row = this.#rows.find(event.target);
    if (!row?.record || event.target.closest('a') || String(getSelection())) {
      return;
    }
    this.#activate(row.index, this.#active.column);
    this.#open(row.record);
  }
}

export const createGrid = (options) => new Grid(options);
