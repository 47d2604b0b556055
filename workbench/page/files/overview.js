// #/: the state of the plant at a glance. Figures that lead to the variables they count, a card for each block, and the
// latest events.

import {BlockWords, countText, groupedText, millisecondsText, shortTime} from './format.js';
import {eventLine} from './event-line.js';
import {make, everyFrame, setAttribute, setText, sparingFocus} from './dom.js';
import {makeSign, setBlockState} from './signs.js';
import {blockState} from './store.js';

const LatestEvents = 12;
const CycleTimes = ['last', 'median', 'maximum'];

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

const taskText = ({task, period_ms: period}) => `${task}${period ? ` every ${millisecondsText(period)}` : ''}`;

function makeCard(block) {
  const state = makeSign();
  const cycle = make('span.dim');
  const contents = make('span');
  const times = CycleTimes.map((title) => {
    const value = make('dd');
    return {value, element: make('div', {}, make('dt', {}, title), value)};
  });
  const timeList = make('dl.times', {'aria-label': 'Cycle times'}, times.map((time) => time.element));
  const bar = make('progress.load', {max: block.period_ms || 1000, value: 0, 'aria-label': 'Time of the latest cycle in its period'});
  const overruns = makeSign();
  const causes = make('ul.causes');
  const element = make('li.card', {},
    make('div.card-head', {}, make('h2', {}, make('a', {href: `#/variables?block=${block.id}`}, block.name)), state),
    make('p.dim.cut', {}, `${block.address}, ${taskText(block)}`), make('p', {}, contents), causes, bar, timeList, make('p.card-foot', {}, cycle, overruns));
  return {element, block, state, cycle, contents, times, timeList, bar, overruns, causes, shownCauses: ''};
}

// The list of causes is made again only if it is another one.
function setCauses(card, causes) {
  const key = JSON.stringify(causes.map(({text, since}) => [text, since]));
  if (key === card.shownCauses) {
    return;
  }
  card.shownCauses = key;
  card.causes.replaceChildren(...causes.map(({text, since}) =>
    make('li', {}, text, make('span.dim', {}, ` since ${shortTime(since)}`))));
}

function drawCard(card) {
  const {block} = card;
  const {now} = block;
  const state = stateOf(block);
  setAttribute(card.element, 'data-state', state);
  setBlockState(card.state, state, now?.error);
  setText(card.contents, contentsText(block));
  setText(card.cycle, now?.cycle ? `cycle ${groupedText(now.cycle)}` : 'no cycle yet');
  const times = now?.cycle ? now.cycle_ms : null;
  card.bar.hidden = !times;
  card.timeList.hidden = !times;
  if (times) {
    card.bar.value = times.last;
    card.bar.classList.toggle('over', times.last > card.bar.max);
    CycleTimes.forEach((name, index) => setText(card.times[index].value, millisecondsText(times[name])));
  }
  card.overruns.className = now?.overruns ? 'sign warn' : 'sign plain';
  setText(card.overruns.firstChild, now?.overruns ? '\u25B2' : '');
  setText(card.overruns.lastChild, now?.cycle ? countText(now.overruns, 'overrun') : '');
  setCauses(card, now?.causes ?? []);
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

export function mount(element, {store}) {
  const figures = Figures.map((figure) => ({...makeFigure(figure), figure}));
  const states = makeStates(store);
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
    states.draw();
  });
  const drawEvents = everyFrame(sparingFocus(latest, () => {
    latest.replaceChildren(...store.events.slice(-LatestEvents).reverse().map((event) => make('li', {}, eventLine(event, store))));
    if (!store.events.length) {
      latest.append(make('li.dim', {}, 'Nothing has happened since the run began.'));
    }
  }));

  element.append(
    make('div.page-head', {}, make('h1', {}, 'Overview'), make('p.dim', {},
      `${countText(store.blocks.length, 'block')} with ${countText(store.variables.length, 'variable')}, running since ${shortTime(store.plant.started)}`)),
    make('div.figures', {}, make('div.figure.whole-figure', {'data-tone': 'none'}, states.element, make('span', {}, 'blocks')), figures.map((figure) => figure.element)),
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
