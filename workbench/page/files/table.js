// #/variables: all variables, with search, filters and sort. The address has what is chosen, for example
// #/variables?text=supply&only=bad,writable&block=2&sort=-value, so that it can be kept as a bookmark.

import {Filters, isLive, predicateOf, sorted} from './choice.js';
import {Columns, TwoLines} from './columns.js';
import {countText, groupedText} from './format.js';
import {createGrid} from './grid.js';
import {announce, make, setAttribute, setText} from './dom.js';

const ReorderMs = 1000;
// Of as many variables, the program gives the trends in one file.
const MostTrends = 100;
const remembered = {address: null, position: null};

function chosen(query) {
  const sort = query.get('sort');
  const block = query.get('block');
  return {
    text: query.get('text') ?? '',
    only: (query.get('only') ?? '').split(',').filter((name) => name in Filters),
    block: block === null || block === '' ? null : Number(block),
    sort: sort ? {column: sort.replace(/^-/, ''), descending: sort.startsWith('-')} : null,
  };
}

function addressOf({text, only, block, sort}) {
  const query = new URLSearchParams();
  if (text) {
    query.set('text', text);
  }
  if (only.length) {
    query.set('only', only.join(','));
  }
  if (block !== null) {
    query.set('block', block);
  }
  if (sort) {
    query.set('sort', (sort.descending ? '-' : '') + sort.column);
  }
  const search = query.toString().replaceAll('%2C', ',');
  return `#/variables${search ? `?${search}` : ''}`;
}

// Ascending, descending, the order of the project.
function nextSort(sort, column) {
  if (sort?.column !== column) {
    return {column, descending: false};
  }
  return sort.descending ? null : {column, descending: true};
}

export function mount(element, {store, query}) {
  const choice = chosen(query);
  let list = [];
  let predicate = null;
  let saying = 0;
  let reorder = 0;

  const search = make('input.search', {
    type: 'search', placeholder: 'Search name, object or value', 'aria-label': 'Search the variables',
    'aria-keyshortcuts': '/', autocomplete: 'off', spellcheck: 'false', oninput: () => change({text: search.value}),
    onkeydown: (event) => {
      if (event.key === 'ArrowDown' || event.key === 'Enter') {
        event.preventDefault();
        grid.element.focus();
      }
    },
  });
  search.value = choice.text;
  const blocks = make('select', {
    'aria-label': 'Block', onchange: () => change({block: blocks.value === '' ? null : Number(blocks.value)}),
  }, make('option', {value: ''}, 'All blocks'), store.blocks.map(({id, name}) => make('option', {value: id}, name)));
  blocks.value = choice.block ?? '';
  const buttons = Object.entries(Filters).map(([name, {title}]) => make('button.filter', {
    type: 'button', 'aria-pressed': String(choice.only.includes(name)), 'data-filter': name,
    onclick: () => toggle(name),
  }, make('span', {}, title), make('span.tally')));
  const order = make('select.order', {
    'aria-label': 'Sort by', onchange: () => change({sort: order.value ? {column: order.value, descending: false} : null}),
  }, make('option', {value: ''}, 'Order of the project'),
    Columns.map(({key, title}) => make('option', {value: key}, `By ${title.toLowerCase()}`)));
  const total = make('span.dim');
  const csv = make('a.csv', {download: 'trends.csv'}, 'Trends as CSV');
  const empty = make('div.empty', {hidden: true});
  const grid = createGrid({
    label: 'Variables', columns: Columns, layout: {twoLines: TwoLines},
    open: ({id}) => { location.hash = `#/variables/${id}`; },
    sort: (column) => change({sort: nextSort(choice.sort, column)}),
  });

  function toggle(name) {
    const {only} = choice;
    change({only: only.includes(name) ? only.filter((other) => other !== name) : [...only, name]});
  }

  function showChoice() {
    for (const button of buttons) {
      setAttribute(button, 'aria-pressed', String(choice.only.includes(button.dataset.filter)));
    }
    order.value = choice.sort?.column ?? '';
    grid.mark(choice.sort);
  }

  function choose() {
    const time = Date.now();
    predicate = predicateOf(choice);
    list = sorted(store.variables.filter((variable) => predicate(variable, time)), choice.sort, store.variables);
    grid.show(list);
    const all = countText(store.variables.length, 'variable');
    setText(total, list.length === store.variables.length ? all : `${groupedText(list.length)} of ${all}`);
    csv.hidden = !list.length || list.length > MostTrends;
    if (!csv.hidden) {
      setAttribute(csv, 'href', `/api/trends.csv?hours=24&${list.map(({id}) => `id=${id}`).join('&')}`);
    }
    empty.hidden = list.length > 0;
    if (!list.length) {
      setText(empty, 'No variable fits. Shorten the search or switch a filter off.');
    }
  }

  function change(next) {
    Object.assign(choice, next);
    history.replaceState(null, '', addressOf(choice));
    showChoice();
    choose();
    clearTimeout(saying);
    saying = setTimeout(() => announce(`${total.textContent} shown`), 700);
  }

  // The order follows the values at most once a second, whatever the number of events.
  function follow(variables) {
    grid.change(variables);
    showTallies();
    if (isLive(choice, choice.sort)) {
      reorder ||= setTimeout(() => {
        reorder = 0;
        choose();
      }, ReorderMs);
    }
  }

  function showTallies() {
    for (const button of buttons) {
      const number = store.counts[button.dataset.filter];
      setText(button.lastChild, number ? String(number) : '');
    }
  }

  function press(event) {
    if (event.key === '/' && !event.target.closest('input, select, textarea, dialog')) {
      event.preventDefault();
      search.focus();
      search.select();
    }
  }

  element.append(
    make('h1.unseen', {}, 'Variables'),
    make('div.tools', {role: 'search'}, search, blocks, order,
      make('div.filters', {role: 'group', 'aria-label': 'Show only'}, buttons)),
    make('p.unseen', {id: 'table-keys'}, 'Arrow keys move, Enter opens a variable or sorts by a column, a slash searches.'),
    make('div.grid-frame', {}, grid.element, empty),
    make('div.grid-foot', {}, total, csv));
  grid.element.setAttribute('aria-describedby', 'table-keys');
  document.body.classList.add('fills');
  document.addEventListener('keydown', press);
  const ends = [store.on('values', follow)];
  const ageing = setInterval(() => choice.only.includes('changed') && choose(), 5000);
  showChoice();
  showTallies();
  choose();
  if (remembered.address === location.hash && remembered.position) {
    grid.restore(remembered.position);
  }

  return () => {
    Object.assign(remembered, {address: addressOf(choice), position: grid.position});
    ends.forEach((end) => end());
    clearInterval(ageing);
    clearTimeout(reorder);
    clearTimeout(saying);
    document.removeEventListener('keydown', press);
    document.body.classList.remove('fills');
    grid.remove();
  };
}
