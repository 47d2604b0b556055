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

const dayAt = (target) => target.closest?.('[data-day]')?.dataset.day ?? null;

function cell(text, drawing) {
  const covering = drawing.eventsOf(text);
  const words = covering.length ? `${dayWords(text)}: ${covering.map((row) => `event ${row + 1}`).join(', ')}` : dayWords(text);
  const element = make('td.schedule-day', {role: 'gridcell', tabindex: text === drawing.active ? '0' : '-1'},
    make('span.unseen', {}, words), make('span.schedule-day-number', {'aria-hidden': 'true'}, String(Number(text.slice(8)))),
    covering.length ? make('span.schedule-day-events', {'aria-hidden': 'true'}, covering.slice(0, 2).map((row) => row + 1).join(' ') +
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

// `on` has: year(year), another year is requested; describe(day), the words of a day; choose(day), Enter or a click, and
// hint, what that does. The element of the page is `element`.
export class Calendar {
  #drawing = null;
  #eventsByDay = new Map();

  constructor(on) {
    this.on = on;
    this.year = 0;
    this.title = make('h2.schedule-year', {'aria-live': 'polite'});
    this.detail = make('p.schedule-detail', {role: 'status', 'aria-live': 'polite'});
    this.grid = make('div.schedule-months');
    const button = (label, text, year) => make('button', {type: 'button', 'aria-label': label, onclick: () => on.year(year())}, text);
    this.element = make('section.panel.schedule-calendar', {'aria-label': 'Calendar of the year'},
      make('div.panel-head', {}, this.title, make('div.schedule-buttons', {}, button('Year before', '\u2039', () => this.year - 1),
        button(null, 'This year', () => Number(this.#drawing.today.slice(0, 4))), button('Next year', '\u203A', () => this.year + 1))),
      this.detail, this.grid);
    this.#listen();
  }

  eventsOf(text) {
    return this.#eventsByDay.get(text) ?? [];
  }

  // `next` has: year, today, days (of each event, as "YYYY-MM-DD"), priorities (of each event).
  draw(next) {
    const {year, today, days, priorities} = next;
    const hadFocus = this.grid.contains(document.activeElement);
    const isKept = this.#drawing?.active.startsWith(`${year}-`);
    this.#eventsByDay = new Map();
    days.forEach((list, row) => list.forEach((text) => this.#eventsByDay.set(text, [...this.eventsOf(text), row])));
    this.#drawing = {
      today,
      active: isKept ? this.#drawing.active : today.startsWith(`${year}-`) ? today : `${year}-01-01`,
      eventsOf: (text) => this.eventsOf(text),
      rank: (rows) => rows.reduce((best, row) => (priorities[row] < priorities[best] ? row : best)),
    };
    this.year = year;
    this.title.textContent = String(year);
    this.#drawMonths();
    this.#describe(null);
    if (hadFocus) {
      this.#activate(this.#drawing.active);
    }
  }

  #drawMonths() {
    const dates = daysOfYear(this.year);
    this.grid.replaceChildren(...months.map((_, month) =>
      monthTable(this.year, month, dates.filter((date) => date.getUTCMonth() === month), this.#drawing)));
  }

  #describe(text) {
    this.detail.textContent = text ? this.on.describe(text) : this.on.hint;
  }

  #activate(text) {
    this.grid.querySelector('[data-day][tabindex="0"]')?.setAttribute('tabindex', '-1');
    this.#drawing.active = text;
    const active = this.grid.querySelector(`[data-day="${text}"]`);
    active?.setAttribute('tabindex', '0');
    active?.focus();
  }

  #choose(text) {
    if (text) {
      this.#activate(text);
      this.on.choose(text);
    }
  }

  async #onKey(event) {
    const text = dayAt(event.target);
    const next = text && otherDay(text, event.key);
    if (text && (event.key === 'Enter' || event.key === ' ')) {
      event.preventDefault();
      this.#choose(text);
    } else if (next) {
      event.preventDefault();
      const year = Number(next.slice(0, 4));
      if (year !== this.year) {
        await this.on.year(year);
      }
      this.#activate(next);
    }
  }

  #listen() {
    this.grid.addEventListener('mouseover', (event) => this.#describe(dayAt(event.target)));
    this.grid.addEventListener('mouseleave', () => this.#describe(null));
    this.grid.addEventListener('focusin', (event) => this.#describe(dayAt(event.target)));
    this.grid.addEventListener('click', (event) => this.#choose(dayAt(event.target)));
    this.grid.addEventListener('keydown', (event) => this.#onKey(event));
  }
}
