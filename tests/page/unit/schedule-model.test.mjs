import assert from 'node:assert/strict';
import { test } from 'node:test';

import * as model from '../../../workbench/page/files/schedule-model.js';
import { hour, instant, minute, timeText, typedTime } from '../../../workbench/page/files/schedule-time.js';

const real = (time, value) => ({ time, type: 'real', value });
const week = () => ({ ...model.emptyModel('weekly'), days: [[real('06:00', '21.5'), real('20:00', '17')], [], [], [], [], [], []] });
const christmas = () => ({
    period: { kind: 'date', date: { year: 2026, month: 12, day: 25, weekday: 5 } }, priority: 10, entries: [real('00:00', '16')],
});
const times = (changed, row = 0) => model.rows(changed)[row].map((entry) => entry.time);

function frozen(value) {
    if (value && typeof value === 'object') Object.values(Object.freeze(value)).forEach(frozen);
    return value;
}

test('an added entry is sorted into its day, and the old model stays', () => {
    const before = frozen(week());
    const { model: after, index } = model.addEntry(before, 0, real('12:00', '20'));
    assert.deepEqual(times(after), ['06:00', '12:00', '20:00']);
    assert.equal(index, 1);
    assert.deepEqual(times(before), ['06:00', '20:00']);
});

test('an entry at a taken time is not added', () => {
    assert.equal(model.addEntry(week(), 0, real('06:00', '1')), null);
});

test('an entry with an unspecified part of its time is last', () => {
    const { model: after } = model.addEntry(week(), 0, real('*:30', '1'));
    assert.deepEqual(times(after), ['06:00', '20:00', '*:30']);
    assert.equal(model.nudgeEntry(after, 0, 2, minute), null);
});

test('a moved entry changes its day and keeps its value', () => {
    const { model: after, row, index } = model.moveEntry(frozen(week()), 0, 0, 2, 7 * hour + 5 * minute);
    assert.deepEqual([row, index], [2, 0]);
    assert.deepEqual(model.rows(after)[2], [real('07:05', '21.5')]);
    assert.deepEqual(times(after), ['20:00']);
});

test('an entry stays within its day', () => {
    assert.equal(model.moveEntry(week(), 0, 0, 0, 24 * hour), null);
    assert.equal(model.moveEntry(week(), 0, 0, 0, -minute), null);
    const late = model.addEntry(week(), 0, real('23:50', '1')).model;
    assert.equal(model.nudgeEntry(late, 0, 2, 15 * minute), null);
});

test('a step passes over the entry in its way', () => {
    const near = model.addEntry(week(), 0, real('06:15', '20')).model;
    const { model: after, index } = model.nudgeEntry(near, 0, 0, 15 * minute);
    assert.deepEqual(times(after), ['06:15', '06:30', '20:00']);
    assert.equal(index, 1);
    assert.equal(after.days[0][1].value, '21.5');
});

test('a step keeps the seconds and the hundredths', () => {
    const { model: day } = model.addEntry(week(), 1, real('08:00:30.25', '20'));
    assert.deepEqual(times(model.nudgeEntry(day, 1, 0, 15 * minute).model, 1), ['08:15:30.25']);
});

test('another value drops the words of the old one, another time keeps them', () => {
    const worded = week();
    worded.days[0][0].words = '21.5 °C';
    assert.equal(model.setEntry(worded, 0, 0, { value: '22' }).model.days[0][0].words, undefined);
    assert.equal(model.moveEntry(worded, 0, 0, 0, 7 * hour).model.days[0][0].words, '21.5 °C');
});

test('an entry is not set to a taken time, but to its own', () => {
    assert.equal(model.setEntry(week(), 0, 0, { time: '20:00' }), null);
    assert.equal(model.setEntry(week(), 0, 0, { time: '06:00', value: '22' }).model.days[0][0].value, '22');
});

test('a copied day replaces the others and leaves itself', () => {
    const after = model.copyDay(frozen(week()), 0, [0, 1, 4]);
    assert.deepEqual([0, 1, 2, 3, 4].map((row) => model.rows(after)[row].length), [2, 2, 0, 0, 2]);
    const changed = model.removeEntry(after, 1, 0);
    assert.deepEqual(times(changed, 4), ['06:00', '20:00']);
});

test('the next free time goes on in steps and turns back at midnight', () => {
    assert.equal(model.freeTime(week(), 0, 6 * hour, hour), '07:00');
    assert.equal(model.freeTime(week(), 1, 6 * hour, hour), '06:00');
    const late = model.addEntry(week(), 0, real('23:00', '1')).model;
    assert.equal(model.freeTime(late, 0, 23 * hour, hour), '22:00');
});

test('events are added, changed and removed, and their entries are rows', () => {
    const added = model.addEvent(frozen(model.emptyModel('exception')), christmas());
    assert.equal(added.row, 0);
    const later = model.addEntry(added.model, 0, real('18:00', '20')).model;
    assert.deepEqual(times(later), ['00:00', '18:00']);
    const urgent = model.setEvent(later, 0, { priority: 3 });
    assert.deepEqual([urgent.events[0].priority, urgent.events[0].entries.length], [3, 2]);
    assert.deepEqual(model.removeEvent(urgent, 0).events, []);
});

test('another period drops the words of the old one, another priority keeps them', () => {
    const worded = { kind: 'exception', events: [{ ...christmas(), words: '25 December 2026' }] };
    assert.equal(model.setEvent(worded, 0, { priority: 3 }).events[0].words, '25 December 2026');
    assert.equal(model.setEvent(worded, 0, { period: { kind: 'calendar', instance: 7 } }).events[0].words, undefined);
});

test('words and the order of names do not make two models different', () => {
    const reordered = { kind: 'weekly', days: week().days.map((day) => day.map(({ time, type, value }) => ({ words: '!', value, type, time }))) };
    assert.ok(model.isSame(week(), reordered));
    assert.ok(!model.isSame(week(), model.removeEntry(week(), 0, 0)));
});

test('undo and redo go through the states, and a new change ends redo', () => {
    const edits = new model.Edits(frozen(week()));
    edits.apply(model.removeEntry(edits.present, 0, 0));
    edits.apply(model.removeEntry(edits.present, 0, 0));
    assert.deepEqual(times(edits.present), []);
    assert.ok(edits.undo() && edits.undo() && !edits.undo());
    assert.ok(!edits.isChanged);
    assert.ok(edits.redo());
    assert.deepEqual(times(edits.present), ['20:00']);
    edits.apply(model.removeEntry(edits.present, 0, 0));
    assert.ok(!edits.canRedo && !edits.redo());
});

test('a change that changes nothing is not a step', () => {
    const edits = new model.Edits(week());
    assert.equal(edits.apply(model.setEntry(week(), 0, 0, { value: '21.5' }).model), false);
    assert.ok(!edits.canUndo);
});

test('after a save the model is unchanged and undo makes it changed', () => {
    const edits = new model.Edits(week());
    edits.apply(model.removeEntry(edits.present, 0, 0));
    edits.save(edits.present);
    assert.ok(!edits.isChanged);
    edits.undo();
    assert.ok(edits.isChanged);
});

test('the history is bounded', () => {
    const edits = new model.Edits(week());
    for (let step = 0; step < 600; ++step) edits.apply(model.setEntry(edits.present, 0, 0, { value: String(step) }).model);
    let count = 0;
    while (edits.undo()) ++count;
    assert.equal(count, 500);
});

test('450 random edits keep the days sorted and are undone to the first model', () => {
    let seed = 15;
    const random = (most) => ((seed = (Math.imul(seed, 1103515245) + 12345) >>> 0) >>> 12) % most;
    const edits = new model.Edits(frozen(week()));
    let steps = 0;
    for (let round = 0; round < 2000 && steps < 450; ++round) {
        const row = random(7);
        const list = edits.present.days[row];
        const changes = [
            () => model.addEntry(edits.present, row, real(timeText(random(24 * 60) * minute), String(random(9)))),
            () => list.length ? model.moveEntry(edits.present, row, random(list.length), random(7), random(288) * 5 * minute) : null,
            () => list.length ? { model: model.removeEntry(edits.present, row, random(list.length)) } : null,
            () => ({ model: model.copyDay(edits.present, row, [random(7)]) }),
        ];
        const changed = changes[random(4)]();
        if (changed && edits.apply(frozen(changed.model))) ++steps;
        for (const day of edits.present.days) {
            const sorted = day.map((entry) => instant(entry.time));
            assert.ok(sorted.every((at, index) => index === 0 || sorted[index - 1] < at));
        }
    }
    assert.equal(steps, 450);
    while (edits.undo());
    assert.deepEqual(edits.present, week());
});

test('typed times are understood in the forms that people use', () => {
    const forms = { 6: '06:00', 615: '06:15', '0615': '06:15', '6.15': '06:15', '6:15': '06:15', ' 06:15:30 ': '06:15:30', '*:30': '*:30',
        '6:00:00': '06:00', '06:00:00.05': '06:00:00.05', '*:5': '*:05' };
    for (const [typed, time] of Object.entries(forms)) assert.equal(typedTime(typed), time, typed);
    for (const wrong of ['', 'noon', '24:00', '6:60', '12345', '-1', '6:15 pm']) assert.equal(typedTime(wrong), null, wrong);
});

test('entries that repeat the value before them are one run', () => {
    const entries = [real('06:00', '21.5'), real('07:00', '21.5'), real('08:00', '17'), { ...real('09:00', '17'), type: 'double' }];
    assert.deepEqual(model.runsOf(entries).map((run) => run.map(({ time }) => time)), [['06:00', '07:00'], ['08:00'], ['09:00']]);
    assert.deepEqual(model.runsOf([]), []);
});
