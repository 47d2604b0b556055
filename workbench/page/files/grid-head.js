// The heading of a grid: a row with the titles of the columns, one of which shows the sort.
//
// new GridHead(cellId): cellId(-1, column) is the id of a title. `element` is for the grid, `height` its height in px,
// which is 0 while it is hidden.
//   make(columns)    replaces the titles; columns as in columns.js
//   mark(sort)       shows {column, descending}, or none for null; it stays when titles are replaced

import {make, setAttribute} from './dom.js';

export class GridHead {
  element = make('div.grid-row.grid-head', {role: 'row', 'aria-rowindex': 1});
  #cellId;
  #columns = [];
  #sort = null;

  constructor(cellId) {
    this.#cellId = cellId;
  }

  get height() {
    return this.element.offsetHeight;
  }

  make(columns) {
    this.#columns = columns;
    this.element.replaceChildren(...columns.map((column, index) => make(`div.grid-cell.cell-${column.key}`, {
      role: 'columnheader', id: this.#cellId(-1, index), 'aria-colindex': index + 1, 'data-column': column.key,
    }, make('span.cut', {}, column.title), make('i.arrow', {'aria-hidden': 'true'}))));
    this.mark(this.#sort);
  }

  mark(sort) {
    this.#sort = sort;
    this.#columns.forEach(({key}, index) => {
      const title = this.element.children[index];
      const isSorted = sort?.column === key;
      setAttribute(title, 'aria-sort', isSorted ? (sort.descending ? 'descending' : 'ascending') : 'none');
      title.lastChild.textContent = isSorted ? (sort.descending ? '\u25BC' : '\u25B2') : '';
    });
  }
}
