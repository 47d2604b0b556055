// The rows of a grid that are in the document: as many as can be seen, and some before and after them. They are made
// once and reused while the grid scrolls: the row of index i is always the same one.
//
// new GridRows(cellId): cellId(row, column) is the id of a cell. `element` is for the grid.
//   make(columns, number)      replaces all rows by so many empty ones; columns as in columns.js
//   resize(height, number)     the height of a row in px, and the number of all records
//   show(records, from)        shows the records from this index on, as many as there are rows
//   change(records)            these have changed: drawn at the next frame if they are shown, with a short highlight
//   highlight(index)           marks the row of this index, if it is shown, as active
//   find(node)                 the row that contains the node, {index, record}; record is null in an empty one
//   remove()                   ends what change() has begun

import {make, setAttribute, everyFrame} from './dom.js';

export class GridRows {
  element = make('div.grid-body', {role: 'rowgroup'});
  #cellId;
  #columns = [];
  #height = 0;
  #pool = [];
  #bound = new Map();
  #changed = new Set();
  #drawChanged = everyFrame(() => this.#drawChanges());

  constructor(cellId) {
    this.#cellId = cellId;
  }

  get number() {
    return this.#pool.length;
  }

  make(columns, number) {
    this.#columns = columns;
    this.#pool = Array.from({length: number}, () => this.#makeRow());
    this.#bound.clear();
    this.element.replaceChildren(...this.#pool.map((row) => row.element));
  }

  resize(height, number) {
    this.#height = height;
    this.element.style.height = `${number * height}px`;
  }

  show(records, from) {
    const end = Math.min(records.length, from + this.#pool.length);
    for (const row of this.#pool) {
      if (row.record && (row.index < from || row.index >= end || records[row.index] !== row.record)) {
        this.#release(row);
      }
    }
    for (let index = from; index < end; ++index) {
      const row = this.#pool[index % this.#pool.length];
      if (row.index !== index) {
        this.#bind(row, index, records[index]);
      }
    }
  }

  change(records) {
    for (const record of records) {
      if (this.#bound.has(record)) {
        this.#changed.add(record);
      }
    }
    if (this.#changed.size) {
      this.#drawChanged();
    }
  }

  highlight(index) {
    for (const row of this.#pool) {
      row.element.classList.toggle('active', row.index === index && row.index >= 0);
    }
  }

  find(node) {
    return this.#pool.find((row) => row.element.contains(node));
  }

  remove() {
    this.#drawChanged.cancel();
  }

  #makeRow() {
    const cells = this.#columns.map((column, index) => make(`div.grid-cell.cell-${column.key}`,
      {role: 'gridcell', 'aria-colindex': index + 1}, column.make()));
    const row = {element: make('div.grid-row', {role: 'row'}, cells), cells, index: -1, record: null};
    row.element.hidden = true;
    return row;
  }

  #fill(row) {
    row.cells.forEach((cell, index) => this.#columns[index].set(cell.firstChild, row.record));
  }

  // The row is an empty one: show() has released what was at another index.
  #bind(row, index, record) {
    row.record = record;
    this.#bound.set(record, row);
    delete row.element.dataset.flash;
    this.#fill(row);
    row.index = index;
    row.element.hidden = false;
    setAttribute(row.element, 'aria-rowindex', index + 2);
    row.element.style.transform = `translateY(${index * this.#height}px)`;
    row.cells.forEach((cell, column) => { cell.id = this.#cellId(index, column); });
    row.element.classList.toggle('odd', index % 2 === 1);
  }

  #release(row) {
    if (this.#bound.get(row.record) === row) {
      this.#bound.delete(row.record);
    }
    row.record = null;
    row.index = -1;
    row.element.hidden = true;
  }

  #drawChanges() {
    for (const record of this.#changed) {
      const row = this.#bound.get(record);
      if (row) {
        this.#fill(row);
        // Two names of the same animation, so that it starts again.
        row.element.dataset.flash = row.element.dataset.flash === 'a' ? 'b' : 'a';
      }
    }
    this.#changed.clear();
  }
}
