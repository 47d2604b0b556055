// #/: the state of the plant at a glance. Figures that lead to the variables they count, a card for each block, the
// outlets, and the latest events.

import {BlockWords, countText, groupedText, shortTime} from './format.js';
import {drawCard, makeCard} from './block-card.js';
import {eventLine} from './event-line.js';
import {make, everyFrame, setAttribute, setText, sparingFocus} from './dom.js';
import {makeOutlets} from './outlets.js';
import {makeSign, setBlockState} from './signs.js';
import {blockState} from './store.js';

const LatestEvents = 12;

// Figures of the plant: where they lead, their tone when they are not 0, and what they count.
const Figures = [
  {title: 'bad values', tone: 'bad', href: '#/variables?only=bad', of: ({counts}) => counts.bad},
  {title: 'uncertain values', tone: 'warn', href: '#/variables?only=uncertain', of: ({counts}) => counts.uncertain},
  {title: 'suspect values', tone: 'warn', href: '#/variables?only=suspect', of: ({counts}) => counts.suspect},
  {title: 'writes pending', tone: 'note', href: '#/variables?only=pending', of: ({counts}) => counts.pending},
  {title: 'writes failed', tone: 'bad', href: '#/variables?only=failed', of: ({counts}) => counts.failed},
  {title: 'overruns of tasks', tone: 'warn', href: null, of: overruns},
];

// The blocks of a task have the same number, the newest is the highest.
function overruns({blocks}) {
  const tasks = new Map();
  for (const {task, now} of blocks) {
    tasks.set(task, Math.max(tasks.get(task) ?? 0, now?.overruns ?? 0));
  }
  return [...tasks.values()].reduce((sum, number) => sum + number, 0);
}

const stateOf = (block) => blockState(block.now);

function makeFigure({title, href}) {
  const number = make('b');
  return {number, element: make(href ? 'a.figure' : 'div.figure', {href}, number, make('span', {}, title))};
}

function setFigure({element, number}, figure, value) {
  setText(number, groupedText(value));
  setAttribute(element, 'data-tone', value ? figure.tone : 'none');
}

// "✓ 34 OK  ✕ 3 FAULT": a sign for each state, hidden without a block in it.
function makeStates(store) {
  const signs = Object.keys(BlockWords).map((state) => [state, makeSign()]);
  return {
    element: make('span.states', {}, signs.map(([, element]) => element)),
    draw() {
      for (const [state, element] of signs) {
        const number = store.blocks.filter((block) => stateOf(block) === state).length;
        setBlockState(element, state);
        setText(element.lastChild, number ? `${number} ${BlockWords[state]}` : '');
      }
    },
  };
}

function makeHead({blocks, variables, plant}) {
  const contents = `${countText(blocks.length, 'block')} with ${countText(variables.length, 'variable')}`;
  return make('div.page-head', {}, make('h1', {}, 'Overview'),
    make('p.dim', {}, `${contents}, running since ${shortTime(plant.started)}`));
}

const makeFigures = (states, figures) => make('div.figures', {},
  make('div.figure.whole-figure', {'data-tone': 'none'}, states.element, make('span', {}, 'blocks')),
  figures.map((figure) => figure.element));

const makeSections = ({blocks}, troubled, list, outlets, latest) => make('div.overview', {},
  make('section', {'aria-labelledby': 'blocks-title'},
    make('div.panel-head', {}, make('h2', {id: 'blocks-title'}, 'Blocks'), blocks.length > 6 && troubled), list),
  make('div.beside', {}, outlets,
    make('section', {'aria-labelledby': 'latest-title'},
      make('div.panel-head', {}, make('h2', {id: 'latest-title'}, 'Latest events'),
        make('a', {href: '#/events'}, 'All events')),
      make('div.panel', {}, latest))));

export function mount(element, {store}) {
  const figures = Figures.map((figure) => ({...makeFigure(figure), figure}));
  const states = makeStates(store);
  const cards = new Map(store.blocks.map((block) => [block, makeCard(block)]));
  const due = new Set(store.blocks);
  const outlets = makeOutlets(store);
  const latest = make('ol.latest');
  const troubled = make('button.filter', {type: 'button', 'aria-pressed': 'false', onclick: () => {
    const pressed = troubled.getAttribute('aria-pressed') !== 'true';
    setAttribute(troubled, 'aria-pressed', String(pressed));
    list.classList.toggle('only-troubled', pressed);
  }}, 'Only with a fault or a cause');
  const list = make('ul.cards', {}, [...cards.values()].map((card) => card.element));

  const draw = everyFrame(() => {
    for (const block of due) {
      const card = cards.get(block);
      drawCard(card);
      card.element.classList.toggle('troubled', stateOf(block) === 'fault' || Boolean(block.now?.causes.length));
    }
    due.clear();
    figures.forEach((figure) => setFigure(figure, figure.figure, figure.figure.of(store)));
    states.draw();
  });
  const drawEvents = everyFrame(sparingFocus(latest, () => {
    const events = store.events.slice(-LatestEvents).reverse();
    latest.replaceChildren(...events.map((event) => make('li', {}, eventLine(event, store))));
    if (!store.events.length) {
      latest.append(make('li.dim', {}, 'Nothing has happened since the run began.'));
    }
  }));

  element.append(makeHead(store), makeFigures(states, figures), makeSections(store, troubled, list, outlets.element, latest));
  draw();
  drawEvents();
  outlets.draw();
  const ends = [
    store.on('block', (block) => { due.add(block); draw(); }),
    store.on('event', drawEvents),
    store.on('outlets', outlets.draw),
  ];
  return () => {
    ends.forEach((end) => end());
    draw.cancel();
    drawEvents.cancel();
  };
}
