// The calendar of a year: twelve months, and on each day the numbers of the events that cover it. One day at a time can
// have the focus: arrows move by days and weeks, Page Up and Page Down by months, Home and End within a month.

import {make} from './dom.js';
import {dayText, daysOfYear, weekdayOf} from './schedule-period.js';
import {months, weekdays} from './schedule-time.js';

const DayMs = 86400000;

export function dayWords(text) {
  const date = new Date(`${text}T00:00:00Z`);
  return `${weekdays[weekdayOf(date) - 1]} ${date.getUTCDate()} ${months[date.getUTCMonth()]} ${date.getUTCFullYear()}`;
}

function cell(text, drawing) {
  const covering = drawing.eventsOf(text);
  const words = covering.length ? `${dayWords(text)}: ${covering.map((row) => `event ${row + 1}`).join(', ')}` : dayWords(text);
  const element = make('td.schedule-day', {role: 'gridcell', tabindex: text === drawing.active ? '0' : '-1', 'aria-label': words},
    make('span.schedule-day-number', {}, String(Number(text.slice(8)))),
    covering.length ? make('span.schedule-day-events', {}, covering.slice(0, 2).map((row) => row + 1).join(' ') +
      (covering.length > 2 ? '+' : '')) : null);
  element.dataset.day = text;
  element.classList.toggle('is-today', text === drawing.today);
  if (covering.length) {
    element.classList.add('is-covered', `event-${drawing.rank(covering) % 6}`);
  }
  return element;
}

function monthTable(year, month, days, drawing) {
  const first = weekdayOf(days[0]) - 1;
  const weeks = [];
  for (let at = -first; at < days.length; at += 7) {
    weeks.push(make('tr', {role: 'row'}, weekdays.map((_, weekday) => {
      const date = days[at + weekday];
      return date ? cell(dayText(date), drawing) : make('td', {role: 'gridcell'});
    })));
  }
  return make('table.schedule-month', {role: 'grid', 'aria-label': `${months[month]} ${year}`},
    make('caption', {'aria-hidden': 'true'}, months[month]),
    make('thead', {}, make('tr', {role: 'row'}, weekdays.map((name) =>
      make('th', {role: 'columnheader', scope: 'col', abbr: name, 'aria-label': name}, name.slice(0, 2))))),
    make('tbody', {}, weeks));
}

function otherDay(text, key) {
  const date = new Date(`${text}T00:00:00Z`);
  const steps = {ArrowLeft: -1, ArrowRight: 1, ArrowUp: -7, ArrowDown: 7};
  if (key in steps) {
    return dayText(new Date(date.getTime() + steps[key] * DayMs));
  }
  const [year, month] = [date.getUTCFullYear(), date.getUTCMonth()];
  switch (key) {
    case 'Home': return dayText(new Date(Date.UTC(year, month, 1)));
    case 'End': return dayText(new Date(Date.UTC(year, month + 1, 0)));
    case 'PageUp': return dayText(new Date(Date.UTC(year, month - 1, 1)));
    case 'PageDown': return dayText(new Date(Date.UTC(year, month + 1, 1)));
    default: return null;
  }
}

// `on` has: year(year), another year is requested; describe(day), the words of a day; choose(day), Enter or a click,
// and hint, what that does. The element is `element`; draw({year, days, today, priorities}) with the days of each event.
export function createCalendar(on) {
  const title = make('h2.schedule-year', {'aria-live': 'polite'});
  const grid = make('div.schedule-months');
  const detail = make('p.schedule-detail', {role: 'status', 'aria-live': 'polite'});
  let drawing = null;
  let year = 0;

  const step = (by) => make('button', {type: 'button', 'aria-label': by < 0 ? 'Year before' : 'Next year', onclick: () => on.year(year + by)},
    by < 0 ? '\u2039' : '\u203A');
  const element = make('section.panel.schedule-calendar', {'aria-label': 'Calendar of the year'},
    make('div.panel-head', {}, title, make('div.schedule-buttons', {}, step(-1),
      make('button', {type: 'button', onclick: () => on.year(Number(drawing.today.slice(0, 4)))}, 'This year'), step(1))),
    detail, grid);

  const dayAt = (target) => target.closest?.('[data-day]')?.dataset.day ?? null;
  const describe = (text) => { detail.textContent = text ? on.describe(text) : on.hint; };

  function activate(text) {
    grid.querySelector('[data-day][tabindex="0"]')?.setAttribute('tabindex', '-1');
    drawing.active = text;
    const active = grid.querySelector(`[data-day="${text}"]`);
    active?.setAttribute('tabindex', '0');
    active?.focus();
  }

  grid.addEventListener('mouseover', (event) => describe(dayAt(event.target)));
  grid.addEventListener('mouseleave', () => describe(null));
  grid.addEventListener('focusin', (event) => describe(dayAt(event.target)));
  grid.addEventListener('click', (event) => {
    const text = dayAt(event.target);
    if (text) {
      activate(text);
      on.choose(text);
    }
  });
  grid.addEventListener('keydown', async (event) => {
    const text = dayAt(event.target);
    if (text && (event.key === 'Enter' || event.key === ' ')) {
      event.preventDefault();
      on.choose(text);
    }
    const next = text && otherDay(text, event.key);
    if (next) {
      event.preventDefault();
      if (Number(next.slice(0, 4)) !== year) {
        await on.year(Number(next.slice(0, 4)));
      }
      activate(next);
    }
  });

  function draw(next) {
    const active = drawing?.active?.startsWith(`${next.year}-`) ? drawing.active : null;
    const hadFocus = grid.contains(document.activeElement);
    year = next.year;
    const byDay = new Map();
    next.days.forEach((days, row) => days.forEach((text) => byDay.set(text, [...(byDay.get(text) ?? []), row])));
    drawing = {
      ...next,
      active: active ?? (next.today.startsWith(`${year}-`) ? next.today : `${year}-01-01`),
      eventsOf: (text) => byDay.get(text) ?? [],
      rank: (rows) => rows.reduce((best, row) => (next.priorities[row] < next.priorities[best] ? row : best)),
    };
    title.textContent = String(year);
    const days = daysOfYear(year);
    grid.replaceChildren(...months.map((_, month) => monthTable(year, month, days.filter((date) => date.getUTCMonth() === month), drawing)));
    describe(null);
    if (hadFocus) {
      activate(drawing.active);
    }
  }
  return {element, draw, eventsOf: (text) => drawing.eventsOf(text), get year() { return year; }};
}
