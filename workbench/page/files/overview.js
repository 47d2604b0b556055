// #/: the state of the plant at a glance. Figures that lead to the variables they count, a card for each block, and the
// latest events.

import {BlockWords, countText, numberText, timeText} from './format.js';
import {eventLine} from './event-line.js';
import {make, everyFrame, setAttribute, setText} from './dom.js';
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
];

const stateOf = (block) => blockState(block.now);

function makeFigure({title, href}) {
  const number = make('b');
  return {number, element: make('a.figure', {href}, number, make('span', {}, title))};
}

function setFigure({element, number}, figure, value) {
  setText(number, numberText(value));
  setAttribute(element, 'data-tone', value ? figure.tone : 'none');
}

const milliseconds = (value) => `${value < 100 ? Number(value.toPrecision(2)) : Math.round(value)} ms`;

// "250 variables, 3 bad, 1 write pending"
function contentsText({variables, counts}) {
  const parts = [countText(variables.length, 'variable')];
  for (const [name, one, many] of [['bad', 'bad', 'bad'], ['uncertain', 'uncertain', 'uncertain'],
    ['suspect', 'suspect', 'suspect'], ['pending', 'write pending', 'writes pending'],
    ['failed', 'write failed', 'writes failed']]) {
    if (counts[name]) {
      parts.push(countText(counts[name], one, many));
    }
  }
  return parts.join(', ');
}

function makeCard(block) {
  const state = makeSign();
  const cycle = make('span.dim');
  const contents = make('span');
  const times = make('p.times');
  const bar = make('progress.load', {max: block.period_ms || 1000, value: 0, 'aria-label': 'Time of the latest cycle in its period'});
  const overruns = makeSign();
  const causes = make('ul.causes');
  const element = make('li.card', {},
    make('div.card-head', {}, make('h2', {}, make('a', {href: `#/variables?block=${block.id}`}, block.name)), state),
    make('p.dim', {}, [block.address, block.task && `task ${block.task}`, block.period_ms && `every ${milliseconds(block.period_ms)}`]
      .filter(Boolean).join(' \u00B7 ')),
    make('p', {}, contents), bar, times, make('p.card-foot', {}, cycle, overruns), causes);
  return {element, block, state, cycle, contents, times, bar, overruns, causes, shownCauses: ''};
}

// The list of causes is made again only if it is another one.
function setCauses(card, causes) {
  const key = JSON.stringify(causes.map(({text, since}) => [text, since]));
  if (key === card.shownCauses) {
    return;
  }
  card.shownCauses = key;
  card.causes.replaceChildren(...causes.map(({text, since}) =>
    make('li', {}, text, make('span.dim', {}, ` since ${timeText(since)}`))));
}

function drawCard(card) {
  const {block} = card;
  const {now} = block;
  const state = stateOf(block);
  setAttribute(card.element, 'data-state', state);
  setBlockState(card.state, state, now?.error);
  setText(card.contents, contentsText(block));
  setText(card.cycle, now?.cycle ? `cycle ${numberText(now.cycle)}` : 'no cycle yet');
  const times = now?.cycle ? now.cycle_ms : null;
  setText(card.times, times
    ? `${milliseconds(times.last)} last, ${milliseconds(times.median)} median, ${milliseconds(times.maximum)} most`
    : '');
  card.bar.hidden = !times;
  if (times) {
    card.bar.value = times.last;
  }
  card.overruns.className = now?.overruns ? 'sign warn' : 'sign plain';
  setText(card.overruns.firstChild, now?.overruns ? '\u25B2' : '');
  setText(card.overruns.lastChild, now?.cycle ? countText(now.overruns, 'overrun') : '');
  setCauses(card, now?.causes ?? []);
}

function statesText(blocks) {
  const numbers = Object.keys(BlockWords).map((state) => [state, blocks.filter((block) => stateOf(block) === state).length]);
  return numbers.filter(([, number]) => number).map(([state, number]) => `${number} ${BlockWords[state]}`).join(', ');
}

export function mount(element, {store}) {
  const figures = Figures.map((figure) => ({...makeFigure(figure), figure}));
  const states = make('b');
  const cards = new Map(store.blocks.map((block) => [block, makeCard(block)]));
  const due = new Set(store.blocks);
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
    setText(states, statesText(store.blocks));
  });
  const drawEvents = everyFrame(() => {
    latest.replaceChildren(...store.events.slice(-LatestEvents).reverse().map((event) => make('li', {}, eventLine(event, store))));
    if (!store.events.length) {
      latest.append(make('li.dim', {}, 'Nothing has happened since the run began.'));
    }
  });

  element.append(
    make('div.page-head', {}, make('h1', {}, 'Overview'), make('p.dim', {},
      `${countText(store.blocks.length, 'block')} with ${countText(store.variables.length, 'variable')}, run since ${timeText(store.plant.started)}`)),
    make('div.figures', {}, make('div.figure', {'data-tone': 'none'}, states, make('span', {}, 'blocks')), figures.map((figure) => figure.element)),
    make('div.overview', {},
      make('section', {'aria-labelledby': 'blocks-title'},
        make('div.panel-head', {}, make('h2', {id: 'blocks-title'}, 'Blocks'), store.blocks.length > 6 && troubled), list),
      make('section', {'aria-labelledby': 'latest-title'},
        make('div.panel-head', {}, make('h2', {id: 'latest-title'}, 'Latest events'), make('a', {href: '#/events'}, 'All events')),
        make('div.panel', {}, latest))));
  draw();
  drawEvents();
  const ends = [
    store.on('block', (block) => { due.add(block); draw(); }),
    store.on('event', drawEvents),
  ];
  return () => {
    ends.forEach((end) => end());
    draw.cancel();
    drawEvents.cancel();
  };
}
