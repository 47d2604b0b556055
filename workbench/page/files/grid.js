// A table of any number of rows of one height. Only the rows that can be seen are in the document; they are reused while
// the table scrolls. For a screen reader it is a grid: the number of rows is that of all, each row has its index, and the
// element that keeps the focus names the active cell.
//
// Keys: arrows, Page Up and Page Down, Home and End (first and last row), Enter and Space (opens a row, sorts a column).
//
// createGrid({label, columns, layout, open, sort}) with columns as in columns.js; `layout` is {twoLines}, a width in rem;
// open(record) and sort(column) are called by mouse and keyboard. Returns:
//   element              for the page; remove() ends it
//   show(records)        replaces the list; the active record stays active where it is in the new list
//   change(records)      these have changed: drawn at the next frame if they are on the screen, with a short highlight
//   mark(sort)           shows {column, descending} in the heading
//   position, restore(position)   scroll offset and active record, to come back to the same place

import {make, setAttribute, everyFrame} from './dom.js';

const Spare = 6;
let grids = 0;

export function createGrid({label, columns, layout, open, sort}) {
  const prefix = `g${++grids}`;
  let records = [];
  let shown = columns;
  let rowHeight = 32;
  let pool = [];
  const bound = new Map();
  const changed = new Set();
  let active = {row: -1, column: 0};
  let wasSort = null;

  const head = make('div.grid-row.grid-head', {role: 'row', 'aria-rowindex': 1});
  const body = make('div.grid-body', {role: 'rowgroup'});
  const element = make('div.grid', {
    role: 'grid', tabindex: 0, 'aria-label': label, 'aria-readonly': 'true', onkeydown: press, onclick: click,
    onscroll: everyFrame(draw), onfocus: everyFrame(() => activate(active.row, active.column, false)),
  }, make('div.grid-top', {role: 'rowgroup'}, head), body);

  const cellId = (row, column) => (row < 0 ? `${prefix}h${column}` : `${prefix}r${row}c${column}`);

  function makeHead() {
    head.replaceChildren(...shown.map((column, index) => make(`div.grid-cell.cell-${column.key}`, {
      role: 'columnheader', id: cellId(-1, index), 'aria-colindex': index + 1, 'data-column': column.key,
    }, make('span.cut', {}, column.title), make('i.arrow', {'aria-hidden': 'true'}))));
    mark(wasSort);
  }

  function makeRow() {
    const cells = shown.map((column, index) => make(`div.grid-cell.cell-${column.key}`,
      {role: 'gridcell', 'aria-colindex': index + 1}, column.make()));
    const row = {element: make('div.grid-row', {role: 'row'}, cells), cells, index: -1, record: null};
    row.element.hidden = true;
    return row;
  }

  // The row heights and columns of the present width. Rows are made again only if the columns are others.
  function measure() {
    const rem = parseFloat(getComputedStyle(document.documentElement).fontSize);
    const width = element.clientWidth / rem;
    const twoLines = width < layout.twoLines;
    const next = columns.filter((column) => twoLines || width >= column.from);
    element.classList.toggle('two-lines', twoLines);
    rowHeight = Math.round((twoLines ? 3.6 : 2) * rem);
    element.style.setProperty('--row', `${rowHeight}px`);
    element.style.setProperty('--columns', next.map((column) => column.width).join(' '));
    const size = Math.ceil(element.clientHeight / rowHeight) + 2 * Spare;
    if (next.length !== shown.length || size > pool.length || !head.firstChild) {
      shown = next;
      setAttribute(element, 'aria-colcount', shown.length);
      makeHead();
      pool = Array.from({length: size}, makeRow);
      bound.clear();
      body.replaceChildren(...pool.map((row) => row.element));
    }
    resize();
    draw();
  }

  function resize() {
    setAttribute(element, 'aria-rowcount', records.length + 1);
    body.style.height = `${records.length * rowHeight}px`;
  }

  function fill(row) {
    row.cells.forEach((cell, index) => shown[index].set(cell.firstChild, row.record));
  }

  function release(row) {
    if (bound.get(row.record) === row) {
      bound.delete(row.record);
    }
    row.record = null;
    row.index = -1;
    row.element.hidden = true;
  }

  function bind(row, index) {
    if (row.record && row.record !== records[index]) {
      release(row);
    }
    if (row.record !== records[index]) {
      row.record = records[index];
      bound.set(row.record, row);
      delete row.element.dataset.flash;
      fill(row);
    }
    row.index = index;
    row.element.hidden = false;
    setAttribute(row.element, 'aria-rowindex', index + 2);
    row.element.style.transform = `translateY(${index * rowHeight}px)`;
    row.cells.forEach((cell, column) => { cell.id = cellId(index, column); });
    row.element.classList.toggle('odd', index % 2 === 1);
    row.element.classList.toggle('active', index === active.row);
  }

  // Binds the rows that can be seen. The row of index i is always the same one of the pool.
  function draw() {
    if (!pool.length) {
      return;
    }
    const first = Math.max(0, Math.floor(element.scrollTop / rowHeight) - Spare);
    const last = Math.min(records.length, first + pool.length);
    for (const row of pool) {
      if (row.record && (row.index < first || row.index >= last || records[row.index] !== row.record)) {
        release(row);
      }
    }
    for (let index = first; index < last; ++index) {
      const row = pool[index % pool.length];
      if (row.index !== index) {
        bind(row, index);
      }
    }
    pointOut();
  }

  // Two names of the same animation, so that it starts again.
  function flash(row) {
    row.element.dataset.flash = row.element.dataset.flash === 'a' ? 'b' : 'a';
  }

  const drawChanged = everyFrame(() => {
    for (const record of changed) {
      const row = bound.get(record);
      if (row) {
        fill(row);
        flash(row);
      }
    }
    changed.clear();
  });

  function pointOut() {
    for (const row of pool) {
      row.element.classList.toggle('active', row.index === active.row && row.index >= 0);
    }
    element.querySelector('.grid-cell.active')?.classList.remove('active');
    const cell = document.getElementById(cellId(active.row, active.column));
    cell?.classList.add('active');
    setAttribute(element, 'aria-activedescendant', cell ? cell.id : null);
  }

  function reveal(index) {
    const top = index * rowHeight;
    const room = element.clientHeight - head.offsetHeight;
    if (top < element.scrollTop) {
      element.scrollTop = top;
    } else if (top + rowHeight > element.scrollTop + room) {
      element.scrollTop = top + rowHeight - room;
    }
  }

  function activate(row, column, scroll = true) {
    const least = head.offsetHeight ? -1 : 0;
    active = {
      row: Math.max(least, Math.min(records.length - 1, row)),
      column: Math.max(0, Math.min(shown.length - 1, column)),
    };
    if (scroll && active.row >= 0) {
      reveal(active.row);
    }
    draw();
  }

  function enter() {
    if (active.row < 0) {
      sort(shown[active.column].key);
    } else if (records[active.row]) {
      open(records[active.row]);
    }
  }

  function press(event) {
    if (event.ctrlKey || event.altKey || event.metaKey) {
      return;
    }
    const page = Math.max(1, Math.floor((element.clientHeight - head.offsetHeight) / rowHeight) - 1);
    const {row, column} = active;
    const act = {
      ArrowUp: () => activate(row - 1, column), ArrowDown: () => activate(row + 1, column),
      ArrowLeft: () => activate(row, column - 1), ArrowRight: () => activate(row, column + 1),
      PageUp: () => activate(Math.max(0, row - page), column), PageDown: () => activate(row + page, column),
      Home: () => activate(0, column), End: () => activate(records.length - 1, column),
      Enter: enter, ' ': enter,
    }[event.key];
    if (act) {
      event.preventDefault();
      act();
    }
  }

  function click(event) {
    const title = event.target.closest('[role="columnheader"]');
    if (title) {
      sort(title.dataset.column);
      return;
    }
    const row = pool.find((candidate) => candidate.element.contains(event.target));
    if (!row?.record || event.target.closest('a') || String(getSelection())) {
      return;
    }
    activate(row.index, active.column);
    open(row.record);
  }

  function mark(next) {
    wasSort = next;
    if (!head.firstChild) {
      return;
    }
    shown.forEach((column, index) => {
      const cell = head.children[index];
      const isSorted = next?.column === column.key;
      setAttribute(cell, 'aria-sort', isSorted ? (next.descending ? 'descending' : 'ascending') : 'none');
      cell.lastChild.textContent = isSorted ? (next.descending ? '\u25BC' : '\u25B2') : '';
    });
  }

  const observer = new ResizeObserver(everyFrame(measure));
  observer.observe(element);

  return {
    element,
    mark,
    show(next) {
      const record = records[active.row];
      records = next;
      const index = record ? records.indexOf(record) : active.row;
      active.row = Math.min(index, records.length - 1);
      resize();
      draw();
    },
    change(list) {
      for (const record of list) {
        if (bound.has(record)) {
          changed.add(record);
        }
      }
      if (changed.size) {
        drawChanged();
      }
    },
    get position() {
      return {top: element.scrollTop, record: records[active.row]};
    },
    restore({top, record}) {
      measure();
      element.scrollTop = top;
      active.row = record ? records.indexOf(record) : -1;
      draw();
    },
    remove() {
      observer.disconnect();
      drawChanged.cancel();
      element.remove();
    },
  };
}
