// The card of a block on the overview: its state and error, what it has, causes, and the times of its cycles.
//
// makeCard(block) returns a card with its `element`; drawCard(card) brings it up to date.

import {countText, groupedText, millisecondsText, shortTime} from './format.js';
import {make, setAttribute, setText} from './dom.js';
import {makeSign, setBlockState} from './signs.js';
import {blockState} from './store.js';

const CycleTimes = ['last', 'median', 'maximum'];

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

export function makeCard(block) {
  const state = makeSign();
  const cycle = make('span.dim');
  const contents = make('span');
  const times = CycleTimes.map((title) => {
    const value = make('dd');
    return {value, element: make('div', {}, make('dt', {}, title), value)};
  });
  const timeList = make('dl.times', {'aria-label': 'Cycle times'}, times.map((time) => time.element));
  const bar = make('progress.load', {
    max: block.period_ms || 1000, value: 0, 'aria-label': 'Time of the latest cycle in its period'});
  const overruns = makeSign();
  const causes = make('ul.causes');
  const element = make('li.card', {},
    make('div.card-head', {}, make('h2', {}, make('a', {href: `#/variables?block=${block.id}`}, block.name)), state),
    make('p.dim.cut', {}, `${block.address}, ${taskText(block)}`), make('p', {}, contents), causes, bar, timeList,
    make('p.card-foot', {}, cycle, overruns));
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

export function drawCard(card) {
  const {block} = card;
  const {now} = block;
  const state = blockState(block.now);
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
