// The view of a schedule: what is in force, the week or the calendar, notes and losses, and the editor.

import {make} from './dom.js';
import {Calendar, dayWords} from './schedule-calendar.js';
import {ask, remarks, remarkText} from './schedule-dialog.js';
import {Editor} from './schedule-editor.js';
import {emptyModel} from './schedule-model.js';
import {drawing, entriesWords, eventDays, eventHead, priorityWords, rowNames, table} from './schedule-parts.js';
import {dayText, weekdayOf} from './schedule-period.js';
import {instant} from './schedule-time.js';
import {axis, drawRows} from './schedule-track.js';

const RefreshMs = 30000;
const drafts = new Map();  // by id of the variable: {model, text} of an edit that was left

// The clock of the plant as of its last cycle; that of the browser before the first.
function plantClock(variable) {
  const iso = variable.block.now?.time;
  const local = new Date(Date.now() - new Date().getTimezoneOffset() * 60000).toISOString();
  const text = typeof iso === 'string' && /^\d{4}-\d\d-\d\dT/.test(iso) ? iso : local;
  return {today: text.slice(0, 10), at: instant(text.slice(11, 19))};
}

// "until 20:00"; with the day if that is another one.
function timeWords(word, iso, today) {
  if (!iso) {
    return '';
  }
  const [day, time] = [iso.slice(0, 10), iso.slice(11, 16)];
  return day === today ? `${word} ${time}` : `${word} ${dayWords(day)}, ${time}`;
}

class View {
  constructor(element, api, store, id) {
    Object.assign(this, {root: element, api, store, id, variable: store.variables[id], answer: null, editor: null});
    this.notice = make('div.schedule-notices');
    this.head = make('header.schedule-head');
    this.body = make('div.schedule-body');
    element.replaceChildren(make('div.schedule', {}, this.head, this.notice, this.body));
    this.removers = [store.on('values', (variables) => variables.includes(this.variable) && this.onValue())];
    this.timer = setInterval(() => this.refresh(), RefreshMs);
    this.guard();
  }

  get clock() { return plantClock(this.variable); }

  async load(year = Number(this.clock.today.slice(0, 4))) {
    try {
      const answer = await this.api.schedule(this.id, year);
      if (!this.isGone) {
        this.answer = answer;
        this.draw();
      }
    } catch (error) {
      this.body.replaceChildren(make('p.notice.bad', {role: 'alert'}, `The schedule cannot be shown: ${error.message}`,
        make('button', {type: 'button', onclick: () => this.load(year)}, 'Try again')));
    }
  }

  // What is in force changes with the time; the rest is drawn again only if it is another one.
  async refresh() {
    const year = this.answer?.calendar?.year ?? Number(this.clock.today.slice(0, 4));
    const answer = this.answer && await this.api.schedule(this.id, year).catch(() => null);
    if (!answer || this.isGone) {
      return;
    }
    if (!this.editor && answer.text !== this.answer.text) {
      this.answer = answer;
      this.draw();
      return;
    }
    Object.assign(this.answer, {now: answer.now, next: answer.next});
    this.drawForce();
    this.editor ? this.editor.drawChecked() : this.drawTime?.();
  }

  onValue() {
    const text = this.variable.now?.value ?? null;
    if (text === (this.answer?.text ?? null) || text === this.warnedOf) {
      return;
    }
    if (this.editor) {
      this.warnedOf = text;
      this.warnChanged();
    } else if (!document.querySelector('dialog[open]')) {
      this.load(this.calendar?.year);
    }
  }

  // The changes are listed again: they are those from the schedule that the device has now.
  warnChanged() {
    this.editor.recheck();
    this.notice.replaceChildren(make('div.notice', {role: 'alert'}, 'The schedule of the device has changed while you edit it. ' +
      'Writing replaces it: see the changes below.',
      make('button', {type: 'button', onclick: () => this.leaveEditor()}, 'Reload, discard my changes')));
  }

  get canWrite() { return this.answer.writable && this.store.session?.writes; }

  draw() {
    this.drawHead();
    this.drawBody();
    const draft = drafts.get(this.id);
    if (draft && !this.editor && this.canWrite) {
      this.notice.replaceChildren(make('div.notice', {}, 'Changes that were not written are kept.',
        make('div.schedule-buttons', {}, make('button', {type: 'button', onclick: () => this.edit(draft)}, 'Continue editing'),
        make('button', {type: 'button', onclick: () => this.dropDraft()}, 'Discard'))));
    }
  }

  dropDraft() {
    drafts.delete(this.id);
    this.notice.replaceChildren();
  }

  drawHead() {
    const {answer, variable} = this;
    const isWeek = variable.kind === 'weekly';
    const related = answer.related ?? {};
    const links = [
      [isWeek ? 'Exceptions' : 'Week', 'schedules', isWeek ? related.exception : related.weekly],
      ['Value', 'variables', related.value],
      ['Variable', 'variables', this.root.id === 'main' ? this.id : null],
    ].filter(([, , id]) => this.store.variables[id]).map(([words, page, id]) => make('span', {}, make('span.dim', {}, `${words}: `),
      make('a', {href: `#/${page}/${id}`}, this.store.variables[id].name)));
    this.head.replaceChildren(
      make('div.schedule-title', {}, make('div', {}, make('h1', {}, variable.name),
        make('p.dim', {}, `${variable.block.name} · ${variable.object} · ${isWeek ? 'weekly schedule' : 'exceptions of a schedule'}`)),
      make('nav.schedule-links', {'aria-label': 'Related'}, links)),
      this.force = make('div.schedule-force'));
    this.drawForce();
  }

  drawForce() {
    const {now, next} = this.answer;
    this.force.replaceChildren(this.forceCard('Now', now, 'not known'),
      this.forceCard('Next', next, now ? 'no further change' : 'not known'));
  }

  forceCard(title, force, otherwise) {
    const words = force?.words ?? otherwise;
    const {today} = this.clock;
    const times = [timeWords('from', title === 'Next' ? force?.since : null, today), timeWords('until', force?.until, today)];
    const details = [times.filter(Boolean).join(' '), force?.source].filter(Boolean).join('; ');
    return make('section.panel.schedule-card', {'aria-label': title}, make('h2.dim', {}, title),
      make('p.schedule-big', {}, words), make('p.dim', {}, details));
  }

  drawBody() {
    if (this.editor) {
      return;
    }
    const {answer} = this;
    const model = answer.model;
    this.calendar = null;
    this.drawTime = null;
    this.body.replaceChildren(...[this.remarks(), model ? this.picture(model) : this.unreadable()].flat().filter(Boolean));
    this.drawCalendar(model);
  }

  remarks() {
    const {notes, losses} = this.answer;
    const found = [
      remarks('notes', make('h2', {}, 'Notes'), (notes ?? []).map((note) => (note.reason ? remarkText(note) : note))),
      remarks('losses', make('h2', {}, 'If this schedule is written back, the device gets something else'),
        (losses ?? []).map(remarkText)),
    ].filter(Boolean);
    found.forEach((section) => section.classList.add('panel'));
    return found;
  }

  unreadable() {
    const {text, mistake, kind} = this.answer;
    if (!mistake) {
      return make('section.panel', {}, make('p', {}, 'The driver has not read this schedule yet.'));
    }
    const begin = () => make('button', {type: 'button', onclick: () => this.edit({model: emptyModel(kind)})},
      'Begin with an empty schedule');
    return make('section.panel', {}, make('h2', {}, 'This text cannot be shown as a schedule'),
      make('p.schedule-mistake', {}, mistake),
      make('pre.schedule-text', {tabindex: '0', role: 'group', 'aria-label': 'Text of the device'}, text),
      this.canWrite ? begin() : this.editButton());
  }

  editButton() {
    if (this.canWrite) {
      return make('button.main', {type: 'button', onclick: () => this.edit({model: this.answer.model})}, 'Edit');
    }
    return make('p.schedule-readonly', {}, this.store.session?.writes ?
      'Read-only: the project does not allow writing this variable.' :
      'Read-only: the page was started without --page-writes.');
  }

  weekday() {
    const {today, at} = this.clock;
    return {row: weekdayOf(new Date(`${today}T00:00:00Z`)) - 1, at};
  }

  drawRows(rows, model) {
    const isWeek = model.kind === 'weekly';
    drawRows(rows, drawing(model, this.answer, {
      now: isWeek ? this.weekday() : null,
      head: (row) => (isWeek ? make('h3', {}, rowNames(model)[row]) : eventHead(model.events[row], row)),
    }));
  }

  picture(model) {
    const isWeek = model.kind === 'weekly';
    const rows = make(`div.schedule-rows${isWeek ? '' : '.is-events'}`, {'aria-hidden': isWeek ? 'true' : null});
    this.drawTime = () => this.drawRows(rows, model);
    this.drawTime();
    const holder = make('div.unseen', {}, table(model, this.answer));
    const toggle = make('button', {type: 'button', 'aria-pressed': 'false', onclick: () => {
      const isShown = holder.classList.toggle('unseen') === false;
      toggle.setAttribute('aria-pressed', String(isShown));
    }}, 'Table');
    const title = isWeek ? 'Week' : 'Exceptions';
    const isEmpty = !isWeek && !model.events.length;
    const panel = make('section.panel.schedule-picture', {'aria-label': title},
      make('div.panel-head', {}, make('h2', {}, title), toggle, this.editButton()),
      isEmpty ? make('p.dim', {}, 'No exceptions: the week is in force on every day.') : [axis(), rows], holder);
    return isWeek ? panel : make('div.schedule-split', {}, this.makeCalendar(), panel);
  }

  makeCalendar(hint = 'Point at a day, or move to it with the arrows, to see what is in force on it.') {
    this.calendar = new Calendar({
      year: (year) => this.showYear(year), describe: (text) => this.describe(text), hint,
      choose: (text) => this.editor?.addEvent(text),
    });
    return this.calendar.element;
  }

  describe(text) {
    const model = this.shownModel;
    const rows = this.calendar.eventsOf(text);
    const words = rows.map((row) => {
      const {priority, entries} = model.events[row];
      return `${row + 1}: ${rowNames(model)[row]} (${priorityWords(priority)}): ${entriesWords(entries, this.answer)}`;
    });
    const action = this.editor ? ' Press to add an exception.' : '';
    return `${dayWords(text)}: ${words.join('; ') || 'no exception'}.${action}`;
  }

  drawCalendar(model, calendar = this.answer.calendar, year = calendar?.year ?? Number(this.clock.today.slice(0, 4))) {
    if (this.calendar) {
      this.shownModel = model;
      this.calendar.draw({year, today: this.clock.today, days: eventDays(model, year, this.editor?.isChanged ? null : calendar),
        priorities: model.events.map(({priority}) => priority)});
    }
  }

  async showYear(year) {
    if (year < 1900 || year > 2154) {
      return;
    }
    if (!this.editor?.isChanged) {
      const answer = await this.api.schedule(this.id, year).catch(() => null);
      this.answer.calendar = answer?.calendar ?? this.answer.calendar;
    }
    this.drawCalendar(this.shownModel, this.answer.calendar, year);
  }

  edit({model, text}) {
    const {answer} = this;
    this.notice.replaceChildren();
    const isWeek = answer.kind === 'weekly';
    const calendar = isWeek ? null : this.makeCalendar('Press a day to add an exception that begins on it.');
    this.editor = new Editor({
      api: this.api, variable: this.variable, info: answer, calendar, today: this.clock.today, now: () => this.weekday(),
      onChange: (changed) => this.onEdited(changed), onDone: () => this.leaveEditor(),
    }, answer.model ?? emptyModel(answer.kind), model);
    this.body.replaceChildren(this.editor.element);
    this.drawCalendar(model);
    if (text !== undefined && text !== answer.text) {
      this.warnChanged();
    }
    const {element} = this.editor;
    (element.querySelector('.schedule-bar') ?? element.querySelector('button:enabled')).focus();
  }

  // `changed` is the edited model, or null if it is as in the device.
  onEdited(changed) {
    changed ? drafts.set(this.id, {model: changed, text: this.answer.text}) : drafts.delete(this.id);
    if (this.editor) {
      this.drawCalendar(this.editor.edits.present, this.answer.calendar, this.calendar?.year);
    }
  }

  async leaveEditor() {
    this.editor.destroy();
    this.editor = null;
    this.warnedOf = undefined;
    this.dropDraft();
    await this.load();
    this.body.querySelector('button.main')?.focus();
  }

  // Leaving the page asks; the back button keeps the changes for the next visit.
  guard() {
    const onUnload = (event) => this.editor?.isChanged && event.preventDefault();
    const onClick = async (event) => {
      const anchor = event.target.closest?.('a[href^="#"]');
      if (!anchor || !this.editor?.isChanged || anchor.hash === '#main') {
        return;
      }
      event.preventDefault();
      const answer = await ask('Leave without writing?', make('p', {}, 'Your changes are kept until this window is closed.'),
        [['stay', 'Stay', 'main'], ['leave', 'Leave']]);
      if (answer === 'leave') {
        location.hash = anchor.hash;
      }
    };
    addEventListener('beforeunload', onUnload);
    document.addEventListener('click', onClick, true);
    this.removers.push(() => removeEventListener('beforeunload', onUnload),
      () => document.removeEventListener('click', onClick, true));
  }

  unmount() {
    this.isGone = true;
    clearInterval(this.timer);
    this.editor?.destroy();
    this.removers.forEach((remove) => remove());
  }
}

export function mount(element, api, store, id) {
  const variable = store.variables[id];
  if (!variable || (variable.kind !== 'weekly' && variable.kind !== 'exception')) {
    element.replaceChildren(make('p', {}, `The variable ${id} is not a schedule of this project.`));
    return () => {};
  }
  const view = new View(element, api, store, id);
  view.load();
  return () => view.unmount();
}
