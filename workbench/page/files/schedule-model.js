// Operations on the JSON model of a schedule. All are pure: they return a new model and share what did not change.
//
// A row is a list of entries: a day of a weekly schedule (0 is Monday) or an event of an exception schedule. The lists
// stay sorted by time. An operation that cannot be done returns null.

import {compareTimes, day, instant, timeText} from './schedule-time.js';

export function rows(model) {
  return model.kind === 'weekly' ? model.days : model.events.map((event) => event.entries);
}

// The entries of a row, those in one list that follow each other with the same value.
export function runsOf(entries) {
  return entries.reduce((runs, entry) => {
    const before = runs.at(-1)?.at(-1);
    const isRepeat = before && before.value === entry.value && before.type === entry.type;
    return isRepeat ? [...runs.slice(0, -1), [...runs.at(-1), entry]] : [...runs, [entry]];
  }, []);
}

export function emptyModel(kind) {
  return kind === 'weekly' ? {kind, days: [[], [], [], [], [], [], []]} : {kind, events: []};
}

function replaced(list, index, item) {
  return list.map((old, at) => at === index ? item : old);
}

function without(list, index) {
  return list.filter((_, at) => at !== index);
}

function withRow(model, row, entries) {
  if (model.kind === 'weekly') return {...model, days: replaced(model.days, row, entries)};
  return {...model, events: replaced(model.events, row, {...model.events[row], entries})};
}

function inserted(entries, entry) {
  const next = entries.findIndex((other) => compareTimes(entry.time, other.time) < 0);
  const index = next < 0 ? entries.length : next;
  return {entries: [...entries.slice(0, index), entry, ...entries.slice(index)], index};
}

function isTaken(entries, time) {
  return entries.some((entry) => entry.time === time);
}

// The words of the server are of the old time or value.
function bare(entry) {
  const {words, ...rest} = entry;
  return rest;
}

export function addEntry(model, row, entry) {
  const list = rows(model)[row];
  if (isTaken(list, entry.time)) return null;
  const {entries, index} = inserted(list, entry);
  return {model: withRow(model, row, entries), row, index};
}

export function removeEntry(model, row, index) {
  return withRow(model, row, without(rows(model)[row], index));
}

// Gives an entry another time or value, or both.
export function setEntry(model, row, index, change) {
  const list = rows(model)[row];
  const entry = {...('value' in change || 'type' in change ? bare(list[index]) : list[index]), ...change};
  return addEntry(withRow(model, row, without(list, index)), row, entry);
}

export function moveEntry(model, row, index, toRow, at) {
  if (at < 0 || at >= day) return null;
  const entry = {...rows(model)[row][index], time: timeText(at)};
  return addEntry(removeEntry(model, row, index), toRow, entry);
}

// Moves an entry by a step, over the entries in its way: two entries of a row have different times.
export function nudgeEntry(model, row, index, step) {
  const start = instant(rows(model)[row][index].time);
  if (Number.isNaN(start)) return null;
  for (let at = start + step; at >= 0 && at < day; at += step) {
    const moved = moveEntry(model, row, index, row, at);
    if (moved) return moved;
  }
  return null;
}

// The first free time from a time on, in steps; null if the day is full.
export function freeTime(model, row, from, step) {
  const list = rows(model)[row];
  for (let at = from; at < day; at += step)
    if (!isTaken(list, timeText(at))) return timeText(at);
  for (let at = from - step; at >= 0; at -= step)
    if (!isTaken(list, timeText(at))) return timeText(at);
  return null;
}

export function copyDay(model, from, to) {
  return to.reduce((copied, row) => row === from ? copied : withRow(copied, row, rows(model)[from]), model);
}

export function addEvent(model, event) {
  return { model: {...model, events: [...model.events, event]}, row: model.events.length };
}

export function setEvent(model, row, change) {
  const {words, ...event} = model.events[row];
  const kept = 'period' in change ? event : model.events[row];
  return {...model, events: replaced(model.events, row, {...kept, ...change})};
}

export function removeEvent(model, row) {
  return {...model, events: without(model.events, row)};
}

// Without the words, which only the server writes.
export function plain(model) {
  return JSON.parse(JSON.stringify(model, (key, value) => key === 'words' ? undefined : value));
}

function ordered(value) {
  if (Array.isArray(value)) return value.map(ordered);
  if (value === null || typeof value !== 'object') return value;
  return Object.fromEntries(Object.keys(value).sort().map((key) => [key, ordered(value[key])]));
}

export function isSame(left, right) {
  return JSON.stringify(ordered(plain(left))) === JSON.stringify(ordered(plain(right)));
}

// The states of a model during an edit, with undo and redo. At most 500 are kept.
export class Edits {
  #past = [];
  #future = [];
  #saved;

  constructor(model) {
    this.present = model;
    this.#saved = model;
  }

  get canUndo() {return this.#past.length > 0;}
  get canRedo() {return this.#future.length > 0;}
  get isChanged() {return !isSame(this.present, this.#saved);}
  get saved() {return this.#saved;}

  apply(model) {
    if (isSame(model, this.present)) return false;
    this.#past = [...this.#past.slice(-499), this.present];
    this.#future = [];
    this.present = model;
    return true;
  }

  undo() {
    if (!this.canUndo) return false;
    this.#future.push(this.present);
    this.present = this.#past.pop();
    return true;
  }

  redo() {
    if (!this.canRedo) return false;
    this.#past.push(this.present);
    this.present = this.#future.pop();
    return true;
  }

  // What is on the device now; the history stays.
  save(model) {
    this.#saved = model;
  }
}
