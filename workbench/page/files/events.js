// #/events: faults, recoveries, writes, suspects. The newest first, with search and filters, and links to the lists as CSV.

import {countText, shortTime} from './format.js';
import {eventPlace} from './event-line.js';
import {make, everyFrame, setText, sparingFocus} from './dom.js';
import {eventSign, eventWords} from './signs.js';
import {wordsOf} from './choice.js';

const Step = 200;
const Titles = ['Time', 'Kind', 'Where', 'What'];

const fits = (event, {words, kind, block}) =>
  (!kind || eventWords(event.kind) === kind) && (!block || event.block === block) &&
  words.every((word) => `${event.block} ${event.variable ?? ''} ${event.text}`.toLocaleLowerCase('en-GB').includes(word));

function makeRow(event, store) {
  const cell = (name, title, ...content) => make(`td.${name}`, {'data-title': title}, ...content);
  return make('tr', {},
    cell('when', 'Time', make('time', {datetime: event.time}, shortTime(event.time))),
    cell('kind', 'Kind', eventSign(event.kind)),
    cell('where', 'Where', eventPlace(event, store)),
    cell('what', 'What', event.text));
}

export function mount(element, {store, query}) {
  let most = Step;
  const kinds = new Set();
  const search = make('input.search', {type: 'search', placeholder: 'Search block, variable or text',
    'aria-label': 'Search the events', autocomplete: 'off', spellcheck: 'false', oninput: () => draw()});
  const kind = make('select', {'aria-label': 'Kind', onchange: () => draw()}, make('option', {value: ''}, 'All kinds'));
  const block = make('select', {'aria-label': 'Block', onchange: () => draw()}, make('option', {value: ''}, 'All blocks'),
    store.blocks.map(({name}) => make('option', {value: name}, name)));
  block.value = query.get('block') ?? '';
  const rows = make('tbody');
  const total = make('span.total.dim');
  const none = make('p.dim', {hidden: true});
  const more = make('button', {type: 'button', hidden: true, onclick: () => { most += Step; draw(); }}, 'Show more');

  function addKinds() {
    for (const event of store.events) {
      const words = eventWords(event.kind);
      if (!kinds.has(words)) {
        kinds.add(words);
        kind.append(make('option', {value: words}, words));
      }
    }
  }

  const draw = everyFrame(sparingFocus(rows, () => {
    addKinds();
    const choice = {words: wordsOf(search.value), kind: kind.value, block: block.value};
    const found = store.events.filter((event) => fits(event, choice)).reverse();
    rows.replaceChildren(...found.slice(0, most).map((event) => makeRow(event, store)));
    more.hidden = found.length <= most;
    none.hidden = found.length > 0;
    setText(none, store.events.length ? 'No event fits.' : 'Nothing has happened since the run began.');
    setText(total, countText(found.length, 'event'));
  }));

  element.append(
    make('div.page-head', {}, make('h1', {}, 'Events'),
      make('a.button', {href: '/api/events.csv', download: 'events.csv'}, 'Events as CSV')),
    make('div.tools', {role: 'search'}, search, kind, block, total),
    make('div.panel.events-panel', {},
      make('table.events', {}, make('caption.unseen', {}, 'Events, the newest first'),
        make('thead', {}, make('tr', {}, Titles.map((title) => make('th', {scope: 'col'}, title)))), rows),
      none, more));
  draw();
  const end = store.on('event', draw);
  return () => {
    end();
    draw.cancel();
  };
}
