import assert from 'node:assert/strict';
import {test} from 'node:test';

import {eventDays, placeOf} from '../../../workbench/page/files/schedule-parts.js';
import {choices, colours, typedValue, usualType, valueLabel, valueMistake} from '../../../workbench/page/files/schedule-value.js';

const entry = (type, value, time = '06:00') => ({time, type, value});
const week = (...entries) => ({kind: 'weekly', days: [entries, [], [], [], [], [], []]});
const celsius = {unit: '°C', states: []};

test('a number has its unit, a true minus and no more digits than a Float has', () => {
  assert.equal(valueLabel(entry('real', '21.5'), celsius), '21.5 °C');
  assert.equal(valueLabel(entry('real', '-3'), celsius), '\u22123 °C');
  assert.equal(valueLabel(entry('real', '0.30000001192'), celsius), '0.3 °C');
});

test('the states of booleans and enumerations count from 0, those of numbers from 1', () => {
  const states = {unit: '', states: ['automatic', 'manual']};
  assert.equal(valueLabel(entry('boolean', 'false'), states), 'automatic');
  assert.equal(valueLabel(entry('enumerated', '1'), states), 'manual');
  assert.equal(valueLabel(entry('unsigned', '1'), states), 'automatic');
  assert.equal(valueLabel(entry('unsigned', '7'), states), '7');
});

test('a null is the default, a boolean without states is on or off, and a text is itself', () => {
  assert.equal(valueLabel(entry('null', ''), celsius), 'default');
  assert.equal(valueLabel(entry('boolean', 'true'), {}), 'on');
  assert.equal(valueLabel(entry('character-string', '<b>'), celsius), '<b>');
});

test('states are chosen, numbers are typed', () => {
  assert.deepEqual(choices('unsigned', {states: ['automatic', 'manual']}), [['1', 'automatic'], ['2', 'manual']]);
  assert.deepEqual(choices('boolean', {states: []}), [['false', 'off'], ['true', 'on']]);
  assert.equal(choices('real', {states: []}), null);
});

test('numbers are coloured by rank, from cool to warm', () => {
  const model = week(entry('real', '17'), entry('real', '21.5'), entry('real', '500'), entry('null', ''));
  const colour = colours(model);
  assert.deepEqual(model.days[0].map((each) => colour(each, celsius)), ['level-1', 'level-3', 'level-5', 'is-default']);
  assert.equal(colours(week(entry('real', '5')))(entry('real', '5'), celsius), 'level-3');
});

test('a comma and a true minus are what people type', () => {
  assert.equal(typedValue('real', ' \u221221,5 '), '-21.5');
  assert.equal(typedValue('character-string', ' a,b '), ' a,b ');
  assert.equal(valueMistake('real', 'warm'), '“warm” is not a number such as 21.5');
  assert.equal(valueMistake('unsigned', '1.5'), '“1.5” is not a whole number from 0 to 4294967295');
  assert.equal(valueMistake('real', '1e-3') + valueMistake('signed', '-7') + valueMistake('character-string', ''), '');
  assert.equal(valueMistake('real', '21.5'), '');
});

test('a new entry has the type of most values', () => {
  assert.equal(usualType(week(entry('null', ''), entry('boolean', 'true')), celsius), 'boolean');
  assert.equal(usualType(week(), celsius), 'real');
  assert.equal(usualType(week(), {states: ['off', 'on']}), 'unsigned');
});

test('the place of a remark is found in words and in paths', () => {
  const model = week(entry('real', '1', '06:00'), entry('real', '2', '20:00'));
  assert.deepEqual(placeOf('Monday 20:00', model), {row: 0, index: 1});
  assert.deepEqual(placeOf('Tuesday', model), {row: 1, index: null});
  assert.deepEqual(placeOf('days[0][1].time', model), {row: 0, index: 1});
  assert.equal(placeOf('', model), null);
  const events = {kind: 'exception', events: [{entries: []}, {entries: [entry('real', '1', '08:00:30')]}]};
  assert.deepEqual(placeOf('event 2, 08:00:30', events), {row: 1, index: 0});
  assert.deepEqual(placeOf('events[1].entries[0].value', events), {row: 1, index: 0});
  assert.deepEqual(placeOf('events[1].period', events), {row: 1, index: null});
  assert.equal(placeOf('event 3', events), null);
});

test('the days of the server are taken only for its own events and year', () => {
  const model = {kind: 'exception', events: [{period: {kind: 'date', date: {year: 2026, month: 12, day: 25, weekday: 5}}, entries: []}]};
  const calendar = {year: 2026, events: [['2026-01-01']]};
  assert.deepEqual(eventDays(model, 2026, calendar), [['2026-01-01']]);
  assert.deepEqual(eventDays(model, 2027, calendar), [[]]);
  assert.deepEqual(eventDays(model, 2026, null), [['2026-12-25']]);
});
