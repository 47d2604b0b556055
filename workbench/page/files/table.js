// #/variables: all variables, with search, filters and sort. The address has what is chosen, so that it can be kept as
// a bookmark.

import {isLive, predicateOf, sorted} from './choice.js';
import {Columns, TwoLines} from './columns.js';
import {countText, groupedText} from './format.js';
import {createGrid} from './grid.js';
import {addressOf, chosen} from './table-address.js';
import {TableTools} from './table-tools.js';
import {announce, make, setAttribute, setText} from './dom.js';

const ReorderMs = 1000;
const AgeMs = 5000;
const AnnounceMs = 700;
// Of as many variables, the program gives the trends in one file.
const MostTrends = 100;
// Of the last visit: who comes back to its address finds the same position.
const remembered = {address: null, position: null};

// Ascending, descending, the order of the project.
function nextSort(sort, column) {
  if (sort?.column !== column) {
    return {column, descending: false};
  }
  return sort.descending ? null : {column, descending: true};
}

class VariableTable {
  #store;
  #choice;
  #tools;
  #grid;
  #announcing = 0;
  #reorder = 0;
  #total = make('span.dim');
  #csv = make('a.csv', {download: 'trends.csv'}, 'Trends as CSV');
  #empty = make('div.empty', {hidden: true});
  #press = (event) => {
    if (event.key === '/' && !event.target.closest('input, select, textarea, dialog')) {
      event.preventDefault();
      this.#tools.search();
    }
  };

  constructor(store, choice) {
    this.#store = store;
    this.#choice = choice;
    this.#grid = createGrid({
      label: 'Variables', columns: Columns, layout: {twoLines: TwoLines},
      open: ({id}) => { location.hash = `#/variables/${id}`; },
      sort: (column) => this.#change({sort: nextSort(choice.sort, column)}),
    });
    this.#grid.element.setAttribute('aria-describedby', 'table-keys');
    this.#tools = new TableTools({
      store, choice, change: (part) => this.#change(part), leave: () => this.#grid.element.focus(),
    });
  }

  // Returns a function that ends it.
  mount(element) {
    element.append(
      make('h1.unseen', {}, 'Variables'), this.#tools.element,
      make('p.unseen', {id: 'table-keys'},
        'Arrow keys move, Enter opens a variable or sorts by a column, a slash searches.'),
      make('div.grid-frame', {}, this.#grid.element, this.#empty), make('div.grid-foot', {}, this.#total, this.#csv));
    document.body.classList.add('fills');
    document.addEventListener('keydown', this.#press);
    const unfollow = this.#store.on('values', (variables) => this.#follow(variables));
    const ageing = setInterval(() => this.#choice.only.includes('changed') && this.#choose(), AgeMs);
    this.#grid.mark(this.#choice.sort);
    this.#choose();
    if (remembered.address === location.hash && remembered.position) {
      this.#grid.restore(remembered.position);
    }
    return () => {
      unfollow();
      clearInterval(ageing);
      this.#unmount();
    };
  }

  #unmount() {
    Object.assign(remembered, {address: addressOf(this.#choice), position: this.#grid.position});
    clearTimeout(this.#reorder);
    clearTimeout(this.#announcing);
    document.removeEventListener('keydown', this.#press);
    document.body.classList.remove('fills');
    this.#grid.remove();
  }

  #change(part) {
    Object.assign(this.#choice, part);
    history.replaceState(null, '', addressOf(this.#choice));
    this.#tools.show(this.#choice);
    this.#grid.mark(this.#choice.sort);
    this.#choose();
    clearTimeout(this.#announcing);
    this.#announcing = setTimeout(() => announce(`${this.#total.textContent} shown`), AnnounceMs);
  }

  #choose() {
    const time = Date.now();
    const {variables} = this.#store;
    const fits = predicateOf(this.#choice);
    const list = sorted(variables.filter((variable) => fits(variable, time)), this.#choice.sort, variables);
    this.#grid.show(list);
    this.#showFoot(list);
    this.#empty.hidden = list.length > 0;
    if (!list.length) {
      setText(this.#empty, 'No variable fits. Shorten the search or switch a filter off.');
    }
  }

  #showFoot(list) {
    const number = this.#store.variables.length;
    const all = countText(number, 'variable');
    setText(this.#total, list.length === number ? all : `${groupedText(list.length)} of ${all}`);
    this.#csv.hidden = !list.length || list.length > MostTrends;
    if (!this.#csv.hidden) {
      setAttribute(this.#csv, 'href', `/api/trends.csv?hours=24&${list.map(({id}) => `id=${id}`).join('&')}`);
    }
  }

  // The order follows the values at most once a second, whatever the number of events.
  #follow(variables) {
    this.#grid.change(variables);
    this.#tools.showTallies(this.#store.counts);
    if (isLive(this.#choice, this.#choice.sort)) {
      this.#reorder ||= setTimeout(() => {
        this.#reorder = 0;
        this.#choose();
      }, ReorderMs);
    }
  }
}

export const mount = (element, {store, query}) => new VariableTable(store, chosen(query)).mount(element);
