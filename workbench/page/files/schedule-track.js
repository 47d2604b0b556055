// Rows of a day each, from midnight to midnight, with a bar for each entry that reaches to the next entry. Without
// `edit` the rows are a picture, hidden from screen readers, which have the table: entries that repeat the value before
// them share its bar, with a tick each. With it each entry has a bar, which is a slider.
//
// On a narrow screen the style sheet makes a list of the same elements.

import {make} from './dom.js';
import {runsOf} from './schedule-model.js';
import {day, hour, instant, minute, timeText} from './schedule-time.js';
import {valueLabel, valueParts} from './schedule-value.js';

const percent = (at) => `${at / day * 100}%`;

function place(element, from, to) {
  element.style.left = percent(from);
  element.style.width = percent(to - from);
  return element;
}

export function axis() {
  const hours = [];
  for (let at = 0; at <= day; at += 3 * hour) {
    const label = make('span.schedule-hour', {}, at === day ? '24:00' : timeText(at));
    label.style.left = percent(at);
    hours.push(label);
  }
  return make('div.schedule-axis', {'aria-hidden': 'true'}, make('div.schedule-axis-line', {}, hours));
}

export const barWords = (name, entry, info) => `${name} ${entry.time}, ${valueLabel(entry, info)}`;

function sliderAttributes(name, entry, info) {
  const at = instant(entry.time);
  return {
    role: 'slider', tabindex: '0', 'aria-label': name, 'aria-valuemin': 0, 'aria-valuemax': 24 * 60 - 1,
    'aria-valuenow': Number.isNaN(at) ? 0 : Math.floor(at / minute), 'aria-valuetext': barWords(name, entry, info),
    'aria-orientation': 'horizontal', 'aria-describedby': 'schedule-keys',
  };
}

// The bar of an entry, and in a picture of those after it that have the same value.
function bar([entry, ...repeats], until, row, index, drawing) {
  const {info, colour, edit, names, selected, wrong} = drawing;
  const {main, unit} = valueParts(entry, info);
  const again = repeats.length ? `, again at ${repeats.map(({time}) => time).join(', ')}` : '';
  const element = make(`div.schedule-bar.${colour(entry, info)}`, {
    ...(edit ? sliderAttributes(names[row], entry, info) : {}),
    title: `${entry.time} ${valueLabel(entry, info)}${again}`,
  }, make('span.schedule-bar-time', {}, entry.time), make('span.schedule-bar-value', {}, main,
    unit ? make('span.schedule-unit', {}, ` ${unit}`) : null));
  element.dataset.row = row;
  element.dataset.index = index;
  element.classList.toggle('is-selected', selected?.row === row && selected?.index === index);
  element.classList.toggle('is-wrong', wrong?.(row, index) ?? false);
  return until === null ? element : place(element, instant(entry.time), until);
}

function lineAt(kind, at) {
  const line = make(`div.${kind}`);
  line.style.left = percent(at);
  return line;
}

// The bars of the entries that have a place on the axis, and the ticks of those that share one.
function barsOf(placed, entries, row, drawing) {
  const runs = drawing.edit ? placed.map((entry) => [entry]) : runsOf(placed);
  const starts = runs.map(([entry]) => instant(entry.time));
  const bars = runs.map((run, at) => bar(run, starts[at + 1] ?? day, row, entries.indexOf(run[0]), drawing));
  const ticks = runs.flatMap((run) => run.slice(1).map(({time}) => lineAt('schedule-tick', instant(time))));
  return {starts, bars, ticks};
}

function trackOf(entries, row, drawing) {
  const placed = entries.filter(({time}) => !Number.isNaN(instant(time)));
  const {starts, bars, ticks} = barsOf(placed, entries, row, drawing);
  const first = starts[0] ?? day;
  const gap = first > 0 ? place(make('div.schedule-gap', {}, make('span.schedule-narrow', {}, '00:00'),
    make('span', {}, drawing.gapWord)), 0, first) : null;
  const isNow = drawing.now?.row === row;
  if (isNow) {
    (bars.filter((_, index) => starts[index] <= drawing.now.at).at(-1) ?? gap)?.classList.add('is-now');
  }
  const loose = entries.filter(({time}) => Number.isNaN(instant(time)));
  const track = make('div.schedule-track', {}, gap, bars, ticks, isNow ? lineAt('schedule-now', drawing.now.at) : null);
  track.dataset.row = row;
  return [track, loose.length ? make('div.schedule-loose', {}, make('span.dim', {}, 'At each matching time: '),
    loose.map((entry) => bar([entry], null, row, entries.indexOf(entry), drawing))) : null];
}

function rowOf(row, key, drawing) {
  const line = make(`div.schedule-row${drawing.now?.row === row ? '.is-today' : ''}`,
    drawing.edit ? {role: 'group', 'aria-label': drawing.names[row]} : {},
    make('div.schedule-row-head', {}, drawing.head(row)), make('div.schedule-row-body'));
  Object.assign(line.dataset, {row, key});
  return line;
}

// `drawing` has: lists (of entries), names (of rows), keys (what the heads show), head(row) (an element), info, colour,
// gapWord, edit, and, if there are any, now {row, at}, selected {row, index}, wrong(row, index). A head stays in the page
// while it shows the same, so that a button that is being pressed stays too.
export function drawRows(element, drawing) {
  const lines = drawing.lists.map((entries, row) => {
    const key = `${drawing.keys[row]} ${drawing.now?.row === row}`;
    const old = element.children[row];
    const line = old?.dataset.key === key ? old : rowOf(row, key, drawing);
    line.classList.toggle('is-empty', entries.length === 0);
    if (drawing.now?.row === row) {
      line.style.setProperty('--clock', `"${timeText(drawing.now.at - drawing.now.at % minute)}"`);
    }
    line.querySelector('.schedule-row-body').replaceChildren(...trackOf(entries, row, drawing).filter(Boolean));
    return line;
  });
  if (lines.length !== element.children.length || lines.some((line, row) => line !== element.children[row])) {
    element.replaceChildren(...lines);
  }
}

export function barAt(element, row, index) {
  return element.querySelector(`.schedule-bar[data-row="${row}"][data-index="${index}"]`);
}

// The time at a position on the screen in steps; the last step of the day at its end.
export function timeAt(track, x, step) {
  const {left, width} = track.getBoundingClientRect();
  const at = Math.round((x - left) / width * day / step) * step;
  return Math.min(Math.max(at, 0), day - step);
}
