// The editor of a schedule. It changes the JSON model only; the server checks each state of it and composes the text.

import {make, setText} from './dom.js';
import {createCheck, withoutPath} from './schedule-check.js';
import {ask, askDays} from './schedule-dialog.js';
import {listen} from './schedule-drag.js';
import {Inspector} from './schedule-inspector.js';
import * as operations from './schedule-model.js';
import {drawing, eventHead, placeOf, rowNames} from './schedule-parts.js';
import {askPeriod} from './schedule-period-form.js';
import {newPeriod} from './schedule-period.js';
import {hour, instant, minute} from './schedule-time.js';
import {axis, barAt, barWords, drawRows} from './schedule-track.js';
import {usualType, usualValue} from './schedule-value.js';
import {confirmWrite} from './schedule-write.js';

const Hint = 'Select an entry to change it.';
const WideHint = ' Drag it to another time, double-click where a new one is to begin, or use the keys.';
const Keys = [['← →', '15 minutes'], ['Shift + ← →', '1 minute'], ['↑ ↓', 'entry of another day'], ['Enter', 'edit'],
  ['N', 'new entry'], ['Delete', 'remove'], ['Ctrl + Z', 'undo']];

export class Editor {
  // `context`: api, variable, info (the answer of GET schedule), calendar (an element or null), today, now(),
  // onChange(model or null), onDone(). `saved` is the model of the device, `model` the one to begin with.
  constructor(context, saved, model) {
    Object.assign(this, context);
    this.edits = new operations.Edits(saved);
    this.edits.apply(model);
    this.selected = null;
    this.preview = null;
    this.check = createCheck(this.api, this.variable.id, () => this.drawChecked(), (remark) => this.goTo(remark));
    this.build();
    this.changed();
  }

  get model() { return this.preview?.model ?? this.edits.present; }
  get isWeek() { return this.edits.present.kind === 'weekly'; }
  get isChanged() { return this.edits.isChanged; }

  build() {
    const button = (text, onclick, kind = '') => make(`button${kind}`, {type: 'button', onclick}, text);
    this.undoButton = button('Undo', () => this.undo('undo'));
    this.redoButton = button('Redo', () => this.undo('redo'));
    this.writeButton = button('Write to the device …', () => this.write(), '.main');
    this.state = make('span.schedule-state');
    this.live = make('div.unseen', {role: 'status', 'aria-live': 'assertive'});
    this.rows = make(`div.schedule-rows.is-editable${this.isWeek ? '' : '.is-events'}`);
    this.inspector = new Inspector(this.info, {
      set: (change) => this.set(change), remove: () => this.remove(this.selected.row, this.selected.index),
      add: () => this.add(this.selected.row, null), back: () => this.focusSelected(),
    });
    const add = this.isWeek ? null : button('Add an exception', () => this.addEvent(this.today));
    this.closeButton = button('Close', () => this.discard());
    const main = make('div.schedule-main', {},
      make('section.panel', {'aria-label': this.isWeek ? 'Week' : 'Exceptions'}, this.keys(), axis(), this.rows),
      this.check.element);
    this.element = make('div.schedule-editor', {}, make('div.schedule-top', {},
      make('div.schedule-toolbar', {role: 'group', 'aria-label': 'Editing'}, add, this.undoButton, this.redoButton, this.state,
        this.closeButton, this.writeButton), this.inspector.element),
    this.calendar ? make('div.schedule-split', {}, this.calendar, main) : main, this.live);
    this.unlisten = listen(this.rows, this.actions());
    this.onKey = (event) => this.shortcut(event);
    document.addEventListener('keydown', this.onKey);
  }

  keys() {
    return make('p.schedule-keys', {id: 'schedule-keys'},
      Keys.map(([key, words]) => make('span', {}, make('kbd', {}, key), ` ${words} `)));
  }

  actions() {
    return {
      select: (row, index) => this.select(row, index),
      timeOf: (row, index) => instant(operations.rows(this.edits.present)[row][index].time),
      preview: (row, index, toRow, at) => this.drag(row, index, toRow, at),
      drop: () => this.drop(),
      cancel: () => { this.preview = null; this.draw(); },
      nudge: (row, index, step) =>
        this.apply(operations.nudgeEntry(this.edits.present, row, index, step), 'It cannot move further'),
      remove: (row, index) => this.remove(row, index),
      edit: () => this.inspector.focus(),
      add: (row, at) => this.add(row, at),
      go: (row, index, step) => this.go(row, index, step),
    };
  }

  shortcut(event) {
    const isElsewhere = event.target.matches?.('input, select') || document.querySelector('dialog[open]');
    if (!(event.ctrlKey || event.metaKey) || isElsewhere) {
      return;
    }
    const key = event.key.toLowerCase();
    const isRedo = key === 'y' || (key === 'z' && event.shiftKey);
    if (isRedo || key === 'z') {
      event.preventDefault();
      this.undo(isRedo ? 'redo' : 'undo');
    }
  }

  say(text) {
    setText(this.live, text);
  }

  // `result` is what an operation of the model returns: {model, row, index}, or null.
  apply(result, otherwise) {
    if (!result) {
      this.say(otherwise);
      return false;
    }
    this.edits.apply(result.model);
    this.selected = result.index === undefined ? null : {row: result.row, index: result.index};
    this.changed();
    this.focusSelected();
    if (this.selected) {
      this.say(this.selectedWords());
    }
    return true;
  }

  changed() {
    this.check.ask(this.edits.present);
    this.onChange(this.isChanged ? this.edits.present : null);
    this.draw();
  }

  // Compares with what the device has now.
  recheck() {
    this.check.ask(this.edits.present);
    this.drawState();
  }

  entryAt({row, index}) {
    return operations.rows(this.model)[row]?.[index] ?? null;
  }

  selectedWords() {
    return barWords(rowNames(this.model)[this.selected.row], this.entryAt(this.selected), this.info);
  }

  draw() {
    const model = this.model;
    drawRows(this.rows, drawing(model, this.info, {
      edit: true, now: this.isWeek ? this.now() : null, selected: this.preview ?? this.selected,
      head: (row) => this.head(row), wrong: (row, index) => this.mistakeOf({row, index}) !== null,
    }));
    this.drawState();
  }

  mistakeOf({row, index}) {
    const isHere = ({place}) => place?.row === row && place.index === index;
    return this.check.remarks(this.model).find(isHere)?.reason ?? null;
  }

  drawState() {
    this.undoButton.disabled = !this.edits.canUndo;
    this.redoButton.disabled = !this.edits.canRedo;
    this.writeButton.disabled = !this.isChanged || !this.check.isWritable;
    setText(this.closeButton, this.isChanged ? 'Discard' : 'Close');
    setText(this.state, this.isChanged ? 'Unsaved changes' : 'No changes');
    this.state.classList.toggle('is-changed', this.isChanged);
    const entry = this.selected && this.entryAt(this.selected);
    if (!entry) {
      this.selected = null;
      this.inspector.hint(Hint, WideHint);
      return;
    }
    this.inspector.show(entry, rowNames(this.model)[this.selected.row], this.mistakeOf(this.selected));
  }

  drawChecked() {
    const hadFocus = this.rows.contains(document.activeElement);
    this.draw();
    if (hadFocus) {
      this.focusSelected();
    }
  }

  head(row) {
    const name = rowNames(this.model)[row];
    const button = (text, label, onclick) =>
      make('button.schedule-small', {type: 'button', 'aria-label': label, title: label, onclick}, text);
    const add = button('+ Entry', `Add an entry: ${name}`, () => this.add(row, null));
    if (this.isWeek) {
      const copy = button('Copy', `Copy ${name} to other days`, () => this.copy(row));
      return [make('h3', {}, name), make('div.schedule-buttons', {}, add, copy)];
    }
    return eventHead(this.model.events[row], row, add,
      button('Period', `Change the period: ${name}`, () => this.changeEvent(row)),
      button('Remove', `Remove the exception: ${name}`, () => this.removeEvent(row)));
  }

  select(row, index) {
    const bar = barAt(this.rows, row, index);
    if (this.selected?.row !== row || this.selected?.index !== index) {
      this.selected = {row, index};
      this.rows.querySelectorAll('.is-selected').forEach((other) => other.classList.remove('is-selected'));
      bar?.classList.add('is-selected');
      this.drawState();
    }
    if (bar && document.activeElement !== bar) {
      bar.focus();
    }
  }

  focusSelected() {
    if (this.selected) {
      barAt(this.rows, this.selected.row, this.selected.index)?.focus();
    }
  }

  drag(row, index, toRow, at) {
    const moved = operations.moveEntry(this.edits.present, row, index, this.isWeek ? toRow : row, at);
    if (!moved) {
      return null;
    }
    this.preview = moved;
    this.draw();
    const words = barWords(rowNames(this.model)[moved.row], this.entryAt(moved), this.info);
    this.say(words);
    return words;
  }

  drop() {
    const moved = this.preview;
    this.preview = null;
    if (moved) {
      this.apply(moved);
    }
  }

  // Up and down: the entry of the row above or below that is nearest in time.
  go(row, index, step) {
    const lists = operations.rows(this.edits.present);
    const at = instant(lists[row][index].time) || 0;
    for (let other = row + step; other >= 0 && other < lists.length; other += step) {
      if (lists[other].length) {
        const far = lists[other].map(({time}) => Math.abs((instant(time) || 0) - at));
        this.select(other, far.indexOf(Math.min(...far)));
        return;
      }
    }
  }

  set(change) {
    const {row, index} = this.selected;
    const result = operations.setEntry(this.edits.present, row, index, change);
    if (!result) {
      return `Another entry has ${change.time}: choose another time, or remove that entry`;
    }
    this.edits.apply(result.model);
    this.selected = {row: result.row, index: result.index};
    this.changed();
    this.say(this.selectedWords());
    return '';
  }

  // A new entry has the value that is in force at its time, so that it changes nothing until it is edited.
  add(row, at) {
    const model = this.edits.present;
    const entries = operations.rows(model)[row];
    const near = this.selected?.row === row ? instant(entries[this.selected.index]?.time) : NaN;
    const from = at ?? (Number.isNaN(near) ? 6 * hour : Math.min(near + hour, 24 * hour - minute));
    const time = operations.freeTime(model, row, from, at === null ? 15 * minute : 5 * minute);
    const before = time && entries.filter((entry) => instant(entry.time) < instant(time)).at(-1);
    const type = before?.type ?? usualType(model, this.info);
    const entry = {time, type, value: before?.value ?? usualValue(type, model, this.info)};
    if (this.apply(time && operations.addEntry(model, row, entry), 'The day is full')) {
      this.inspector.focus();
    }
  }

  remove(row, index) {
    const words = barWords(rowNames(this.model)[row], this.entryAt({row, index}), this.info);
    const model = operations.removeEntry(this.edits.present, row, index);
    const left = operations.rows(model)[row].length;
    this.apply({model, row, index: left ? Math.min(index, left - 1) : undefined});
    if (!left) {
      this.rows.querySelector(`.schedule-row[data-row="${row}"] button`)?.focus();
    }
    this.say(`Removed: ${words}`);
  }

  async copy(row) {
    const names = rowNames(this.model);
    const days = await askDays(row, names);
    if (days?.length) {
      this.apply({model: operations.copyDay(this.edits.present, row, days)});
      this.say(`${names[row]} copied to ${days.map((other) => names[other]).join(', ')}`);
    }
    this.rows.querySelectorAll(`.schedule-row[data-row="${row}"] button`)[1]?.focus();
  }

  async periodWords(event) {
    const entries = [{time: '00:00', type: 'null', value: ''}];
    const answer = await this.api.composeSchedule(this.variable.id, {kind: 'exception', events: [{...event, entries}]});
    const [mistake] = answer.mistakes;
    return mistake ? mistake.reason : answer.model.events[0].words ?? '';
  }

  async askEvent(title, event, firstDay) {
    const words = (now) => this.periodWords(now).catch((error) => withoutPath(error.message));
    const change = await askPeriod({title, event, firstDay, words});
    return change && {...change, words: await this.periodWords(change).catch(() => undefined)};
  }

  async addEvent(firstDay) {
    const change = await this.askEvent('Add an exception', {period: newPeriod('date', firstDay), priority: 10}, firstDay);
    if (change) {
      const type = usualType(this.edits.present, this.info);
      const entry = {time: '00:00', type, value: usualValue(type, this.edits.present, this.info)};
      const {model, row} = operations.addEvent(this.edits.present, {...change, entries: [entry]});
      this.apply({model, row, index: 0});
      this.inspector.focus();
    }
  }

  async changeEvent(row) {
    const change = await this.askEvent('Change the period', this.edits.present.events[row], this.today);
    if (change) {
      this.apply({model: operations.setEvent(this.edits.present, row, change)});
    }
    this.rows.querySelectorAll(`.schedule-row[data-row="${row}"] button`)[1]?.focus();
  }

  removeEvent(row) {
    const name = rowNames(this.model)[row];
    this.apply({model: operations.removeEvent(this.edits.present, row)});
    this.element.querySelector('.schedule-toolbar button')?.focus();
    this.say(`Removed: ${name}`);
  }

  undo(kind) {
    if (this.edits[kind]()) {
      this.changed();
      this.focusSelected();
      this.say(kind === 'undo' ? 'Undone' : 'Redone');
    }
  }

  goTo({place}) {
    const at = placeOf(place, this.edits.present);
    if (at && at.index !== null) {
      this.select(at.row, at.index);
    }
  }

  async discard() {
    const isSure = !this.isChanged || await ask('Discard the changes?',
      make('p', {}, 'The schedule of the device stays as it is.'),
      [['keep', 'Keep editing'], ['discard', 'Discard', 'main']]) === 'discard';
    if (isSure) {
      this.onDone();
    }
  }

  async write() {
    const check = this.check.answer;
    const {api, variable, edits} = this;
    const isWritten = await confirmWrite({api, variable, model: edits.present, text: check.text, check});
    if (isWritten) {
      this.edits.save(this.edits.present);
      this.onDone();
    } else {
      this.writeButton.focus();
    }
  }

  destroy() {
    document.removeEventListener('keydown', this.onKey);
    this.unlisten();
    this.check.stop();
  }
}
