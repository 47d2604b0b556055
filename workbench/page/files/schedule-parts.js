// What the view and the editor draw in the same way: names of rows, events, and the table of all entries.

import {make} from './dom.js';
import {daysOf} from './schedule-period.js';
import {rows} from './schedule-model.js';
import {weekdays} from './schedule-time.js';
import {colours, valueLabel} from './schedule-value.js';

export function rowNames(model) {
  return model.kind === 'weekly' ? weekdays : model.events.map((event, row) => event.words ?? `event ${row + 1}`);
}

const rowKeys = (model) =>
  (model.kind === 'weekly' ? weekdays : model.events.map((event) => `${event.words} ${event.priority}`));

export function drawing(model, info, more) {
  return {
    lists: rows(model), names: rowNames(model), keys: rowKeys(model), info, colour: colours(model),
    gapWord: model.kind === 'weekly' ? 'default' : 'as the week', ...more,
  };
}

export function priorityWords(priority) {
  return priority === 1 ? 'Priority 1, wins over all' : `Priority ${priority}`;
}

// The head of an event: its number as in the calendar, its period in words, and its priority.
export function eventHead(event, row, ...buttons) {
  return [
    make('div.schedule-event', {}, make(`span.schedule-badge.event-${row % 6}`, {}, String(row + 1)),
      make('div', {}, make('h3', {}, event.words ?? `Event ${row + 1}`), make('p.dim', {}, priorityWords(event.priority)))),
    buttons.length ? make('div.schedule-buttons', {}, buttons) : null,
  ];
}

// The period of an event comes first in a table of exceptions, the day in one of a week.
export function table(model, info) {
  const names = rowNames(model);
  const isWeek = model.kind === 'weekly';
  const line = (row, entry) => make('tr', {}, make('th', {scope: 'row'}, names[row]),
    isWeek ? null : make('td', {}, String(model.events[row].priority)),
    make('td', {}, entry?.time ?? '\u2013'), make('td', {}, entry ? valueLabel(entry, info) : 'no entries'));
  const lines = rows(model).flatMap((entries, row) =>
    (entries.length ? entries.map((entry) => line(row, entry)) : [line(row, null)]));
  return make('table.schedule-table', {},
    make('caption.unseen', {}, isWeek ? 'Entries of the week' : 'Entries of the exceptions'),
    make('thead', {}, make('tr', {}, (isWeek ? ['Day', 'Time', 'Value'] : ['Period', 'Priority', 'Time', 'Value']).map((text) =>
      make('th', {scope: 'col'}, text)))), make('tbody', {}, lines));
}

export function entriesWords(entries, info) {
  return entries.length ? entries.map((entry) => `${entry.time} ${valueLabel(entry, info)}`).join(', ') : 'no entries';
}

// The days of the events: those of the server, or counted here for events that the server does not have yet.
export function eventDays(model, year, calendar) {
  return calendar?.year === year && calendar.events.length === model.events.length ? calendar.events :
    model.events.map((event) => daysOf(event.period, year));
}

// Where a remark of the server belongs: "Monday 06:00", "event 2, 06:00", "days[0][2].time", "events[1].entries[0]".
export function placeOf(place, model) {
  const path = /^(?:days\[(\d+)\]|events\[(\d+)\](?:\.entries)?)(?:\[(\d+)\])?/.exec(place);
  if (path) {
    return {row: Number(path[1] ?? path[2]), index: path[3] === undefined ? null : Number(path[3])};
  }
  const words = /^(?:event (\d+)|([A-Z][a-z]+day))(?:,? ([\d*:.]+))?/.exec(place);
  const row = words ? (words[1] ? Number(words[1]) - 1 : weekdays.indexOf(words[2])) : -1;
  const entries = rows(model)[row];
  if (!entries) {
    return null;
  }
  const index = entries.findIndex(({time}) => time === words[3]);
  return {row, index: index < 0 ? null : index};
}
