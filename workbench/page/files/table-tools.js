// What is above the table of variables: search, block, order and filters.
//
// new TableTools({store, choice, change, leave}): change(part) is called with the part of a choice that the user has
// set, and leave() when the keys go on to the table. `element` is for the page.
//   show(choice)             the filters and the order that are chosen, also those that were set elsewhere
//   showTallies(counts)      how many variables each filter finds
//   search()                 moves the focus to the search

import {Filters} from './choice.js';
import {Columns} from './columns.js';
import {make, setAttribute, setText} from './dom.js';

export class TableTools {
  #choice;
  #change;
  #search;
  #order;
  #filters;

  constructor({store, choice, change, leave}) {
    this.#choice = choice;
    this.#change = change;
    this.#search = this.#makeSearch(leave);
    this.#order = this.#makeOrder();
    this.#filters = Object.entries(Filters).map(([name, {title}]) => make('button.filter', {
      type: 'button', 'data-filter': name, onclick: () => this.#toggle(name),
    }, make('span', {}, title), make('span.tally')));
    this.element = make('div.tools', {role: 'search'}, this.#search, this.#makeBlocks(store), this.#order,
      make('div.filters', {role: 'group', 'aria-label': 'Show only'}, this.#filters));
    this.show(choice);
    this.showTallies(store.counts);
  }

  show({only, sort}) {
    for (const button of this.#filters) {
      setAttribute(button, 'aria-pressed', String(only.includes(button.dataset.filter)));
    }
    this.#order.value = sort?.column ?? '';
  }

  showTallies(counts) {
    for (const button of this.#filters) {
      const number = counts[button.dataset.filter];
      setText(button.lastChild, number ? String(number) : '');
    }
  }

  search() {
    this.#search.focus();
    this.#search.select();
  }

  #makeSearch(leave) {
    const search = make('input.search', {
      type: 'search', placeholder: 'Search name, object or value', 'aria-label': 'Search the variables',
      'aria-keyshortcuts': '/', autocomplete: 'off', spellcheck: 'false',
      oninput: () => this.#change({text: search.value}),
      onkeydown: (event) => {
        if (event.key === 'ArrowDown' || event.key === 'Enter') {
          event.preventDefault();
          leave();
        }
      },
    });
    search.value = this.#choice.text;
    return search;
  }

  #makeBlocks(store) {
    const blocks = make('select', {
      'aria-label': 'Block', onchange: () => this.#change({block: blocks.value === '' ? null : Number(blocks.value)}),
    }, make('option', {value: ''}, 'All blocks'), store.blocks.map(({id, name}) => make('option', {value: id}, name)));
    blocks.value = this.#choice.block ?? '';
    return blocks;
  }

  #makeOrder() {
    const order = make('select.order', {
      'aria-label': 'Sort by',
      onchange: () => this.#change({sort: order.value ? {column: order.value, descending: false} : null}),
    }, make('option', {value: ''}, 'Order of the project'),
      Columns.map(({key, title}) => make('option', {value: key}, `By ${title.toLowerCase()}`)));
    return order;
  }

  #toggle(name) {
    const {only} = this.#choice;
    this.#change({only: only.includes(name) ? only.filter((other) => other !== name) : [...only, name]});
  }
}
