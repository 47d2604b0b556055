// The form of an event of an exception schedule: its period and its priority. The words of the period come from the
// server while the form is filled in.

import {make} from './dom.js';
import {
  dateFields, isCalendarDay, isOpen, isWholeDate, kinds, newPeriod, wholeDateText, withWeekday,
} from './schedule-period.js';
import {months, weekdays} from './schedule-time.js';

const Weeks = [
  'Days 1 to 7 (first)', 'Days 8 to 14 (second)', 'Days 15 to 21 (third)', 'Days 22 to 28 (fourth)',
  'Days 29 to 31 (fifth)', 'Last 7 days (last)', 'The 7 days before (second to last)',
  'The 7 days before those (third to last)', 'The 7 days before those (fourth to last)',
];

let lastId = 0;

function field(label, control) {
  control.id = `schedule-field-${++lastId}`;
  return make('div.schedule-field', {}, make('label', {for: control.id}, label), control);
}

function select(options, value) {
  const element = make('select', {}, options.map(([key, text]) => make('option', {value: key}, text)));
  element.value = value ?? '';
  return element;
}

const optional = (any, names) => [['', any], ...names.map((name, index) => [String(index + 1), name])];
const numberOrNull = (text) => (text.trim() === '' ? null : Number(text));
const monthOptions = (any) => [...optional(any, months), ['13', 'Odd months'], ['14', 'Even months']];

function dayOptions() {
  const days = Array.from({length: 31}, (_, index) => String(index + 1));
  return [...optional('Every day', days), ['32', 'Last day of the month'], ['33', 'Odd days'], ['34', 'Even days']];
}

// The parts of a date, each of which may be open.
function dateControls(date, legend) {
  const year = make('input', {type: 'number', min: 1900, max: 2154, placeholder: 'every', value: date.year ?? ''});
  const month = select(monthOptions('Every month'), date.month);
  const dayOfMonth = select(dayOptions(), date.day);
  const weekday = select(optional('Any weekday', weekdays), date.weekday);
  return {
    element: make('fieldset.schedule-date', {}, make('legend', {}, legend), field('Day', dayOfMonth),
      field('Month', month), field('Year', year), field('Weekday', weekday)),
    read() {
      const read = {
        year: numberOrNull(year.value), month: numberOrNull(month.value), day: numberOrNull(dayOfMonth.value),
        weekday: numberOrNull(weekday.value),
      };
      const right = withWeekday(read);
      weekday.value = right.weekday ?? '';
      return right;
    },
    mistake: (read) => {
      if (!year.validity.valid) {
        return 'The year is 1900 to 2154, or empty for every year';
      }
      const name = `${months[read.month - 1]} ${read.year ?? ''}`.trim();
      return isCalendarDay(read) ? '' : `${name} has no day ${read.day}: choose another day`;
    },
  };
}

function wholeDateControl(date, legend) {
  const value = isWholeDate(date) ? wholeDateText(date) : '';
  const input = make('input', {type: 'date', min: '1900-01-01', max: '2154-12-31', value});
  const open = {year: null, month: null, day: null, weekday: null};
  return {
    element: field(`${legend} (empty: open)`, input),
    read: () => (input.value ? dateFields(input.value) : open),
    mistake: () => (input.validity.valid ? '' : `${legend}: the date is not complete`),
  };
}

// A limit of a range that is open in parts keeps its parts.
function limitControl(date, legend) {
  return isOpen(date) || isWholeDate(date) ? wholeDateControl(date, legend) : dateControls(date, legend);
}

const Controls = {
  date(period) {
    const date = dateControls(period.date, 'Date, each part of which may be open');
    return {
      element: date.element,
      read: () => ({kind: 'date', date: date.read()}),
      mistake: (read) => date.mistake(read.date),
    };
  },
  range(period) {
    const [from, to] = [limitControl(period.from, 'From'), limitControl(period.to, 'To')];
    const order = ({year, month, day}) => (year ?? 0) * 10000 + (month ?? 0) * 100 + (day ?? 0);
    return {
      element: make('div.schedule-fields', {}, from.element, to.element),
      read: () => ({kind: 'range', from: from.read(), to: to.read()}),
      mistake: (read) => from.mistake(read.from) || to.mistake(read.to) ||
        (read.from.year && read.to.year && order(read.from) > order(read.to) ?
          'The last day is before the first: exchange them' : ''),
    };
  },
  'week-and-day'(period) {
    const month = select(monthOptions('Every month'), period.month);
    const week = select(optional('Every week', Weeks), period.week);
    const weekday = select(optional('Every day', weekdays), period.weekday);
    return {
      element: make('div.schedule-fields', {}, field('Weekday', weekday), field('Week of the month', week),
        field('Month', month)),
      read: () => ({kind: 'week-and-day', month: numberOrNull(month.value), week: numberOrNull(week.value),
        weekday: numberOrNull(weekday.value)}),
      mistake: () => '',
    };
  },
  calendar(period) {
    const instance = make('input', {type: 'number', min: 0, max: 4194302, value: period.instance});
    return {
      element: make('div.schedule-fields', {}, field('Number of the Calendar object', instance),
        make('p.dim', {}, 'The days are kept in the device, so this page cannot draw them.')),
      read: () => ({kind: 'calendar', instance: Number(instance.value)}),
      mistake: () => (instance.value !== '' && instance.validity.valid ? '' :
        'The number of a Calendar object is 0 to 4194302'),
    };
  },
};

const PriorityWords = {1: '1 (wins over all)', 16: '16 (lowest)'};
const Priorities = Array.from({length: 16}, (_, index) => String(index + 1))
  .map((priority) => [priority, PriorityWords[priority] ?? priority]);

class PeriodForm {
  #asked = 0;

  constructor({title, event, firstDay, words}) {
    Object.assign(this, {event, firstDay, words});
    this.kind = select(Object.entries(kinds), event.period.kind);
    this.priority = select(Priorities, String(event.priority));
    this.fields = make('div.schedule-period');
    this.live = make('p.schedule-words', {role: 'status', 'aria-live': 'polite'});
    this.apply = make('button.main', {type: 'submit'}, 'Apply');
    const form = make('form', {method: 'dialog', onsubmit: () => { this.dialog.returnValue = 'yes'; }},
      make('h2', {}, title), field('Kind of period', this.kind), this.fields, this.live,
      field('Priority', this.priority), make('p.dim', {},
        'Of events on the same day the one with the lowest number is in force; all come before the week.'),
      make('div.schedule-buttons', {},
        make('button', {type: 'button', onclick: () => this.dialog.close('no')}, 'Cancel'), this.apply));
    this.dialog = make('dialog.schedule-dialog', {'aria-label': title}, form);
    form.addEventListener('input', (input) => (input.target === this.kind ? this.#changeKind() : this.#update()));
    this.#show(event.period);
  }

  read() {
    return {period: this.controls.read(), priority: Number(this.priority.value)};
  }

  #changeKind() {
    const {period} = this.event;
    this.#show(this.kind.value === period.kind ? period : newPeriod(this.kind.value, this.firstDay));
  }

  #show(period) {
    this.controls = Controls[period.kind](period);
    this.fields.replaceChildren(this.controls.element);
    this.#update();
  }

  async #update() {
    const now = this.read();
    const mistake = this.controls.mistake(now.period);
    const number = ++this.#asked;
    this.apply.disabled = mistake !== '';
    this.live.classList.toggle('is-mistake', mistake !== '');
    const text = mistake || await this.words(now);
    if (number === this.#asked) {
      this.live.textContent = text;
    }
  }
}

// Opens the form in a dialog. `words(event)` resolves to the words of a period. Resolves to {period, priority}, or
// null.
export function askPeriod(request) {
  return new Promise((resolve) => {
    const form = new PeriodForm(request);
    form.dialog.addEventListener('close', () => {
      form.dialog.remove();
      resolve(form.dialog.returnValue === 'yes' ? form.read() : null);
    });
    document.body.append(form.dialog);
    form.dialog.showModal();
  });
}
