// Values, times and numbers in words.
import {strict as assert} from 'node:assert';
import {test} from 'node:test';

import {parseJson} from '../../../workbench/page/files/api.js';
import {briefNumberText, countText, millisecondsText, numberText, offsetMs, qualityKind, shortTime, timeText, todayAt, valueText}
  from '../../../workbench/page/files/format.js';

test('a number has seven digits that count, and a whole one all of them', () => {
  const shown = [21.5, 21.532712345, -0.001234567891, 9007199254740991, -5, 1e21, 0].map(numberText);
  assert.deepEqual(shown, ['21.5', '21.53271', '\u22120.001234568', '9007199254740991', '\u22125', '1e+21', '0']);
});

test('a number in a column is brief', () => {
  const shown = [21.532712, 204.7427, 0.0012345678, -0.5, 9007199254740991, 1e21, 0].map(briefNumberText);
  assert.deepEqual(shown, ['21.533', '204.743', '0.001235', '\u22120.5', '9007199254740991', '1e+21', '0']);
});

test('an integer of 64 bits keeps its digits', () => {
  const {value, text} = parseJson('{"value":12345678901234567890,"text":"\\"value\\":12345678901234567890,"}');
  assert.equal(value, '12345678901234567890');
  assert.equal(text, '"value":12345678901234567890,');
  assert.equal(parseJson('{"value":21.5}').value, 21.5);
});

test('the top two bits of a status are its quality', () => {
  assert.deepEqual(['0x00000000', '0x002D0000', '0x40000000', '0x808C0000', '0xC0000000'].map(qualityKind),
    ['good', 'good', 'uncertain', 'bad', 'bad']);
});

test('a value has its unit, or the text of its state and its number', () => {
  assert.equal(valueText({kind: 'number', unit: '°C', now: {value: 21.5}}), '21.5 °C');
  assert.equal(valueText({kind: 'state', unit: null, now: {value: 2, stateText: 'manual'}}), 'manual (2)');
  assert.equal(valueText({kind: 'boolean', unit: null, now: {value: true, stateText: 'released'}}), 'released');
  assert.equal(valueText({kind: 'boolean', unit: null, now: {value: false}}), 'false');
  assert.equal(valueText({kind: 'number', unit: 'Pa', now: {value: 'nan'}}), 'nan Pa');
  assert.equal(valueText({kind: 'text', unit: null, now: {value: '<b>'}}), '<b>');
});

test('a value that is missing is a dash, and a schedule is not its text', () => {
  assert.equal(valueText({kind: 'number', unit: '°C', now: null}), '\u2013');
  assert.equal(valueText({kind: 'text', unit: null, now: {value: null}}), '\u2013');
  assert.equal(valueText({kind: 'weekly', unit: null, now: {value: '06000000,4,9,21.5;;;;;;;'}}), 'weekly schedule');
});

test('a time is that of the plant, without the date if that is the current one', () => {
  const iso = '2026-11-21T23:30:33.156+01:00';
  assert.equal(timeText(iso), '2026-11-21 23:30:33');
  assert.equal(timeText(iso, '2026-11-21'), '23:30:33');
  assert.equal(timeText(null), '\u2013');
  const later = Date.parse('2026-11-21T23:30:00Z');
  assert.equal(todayAt(iso, later), '2026-11-22');
  assert.equal(shortTime(iso, later), '2026-11-21 23:30:33');
  assert.equal(shortTime(iso, later - 3600000), '23:30:33');
});

test('an offset has a sign, hours and minutes', () => {
  assert.deepEqual(['2026-11-21T09:30:33+05:30', '2026-11-21T09:30:33-03:00', '2026-11-21T09:30:33Z', undefined].map(offsetMs),
    [19800000, -10800000, 0, 0]);
});

test('counts and durations are as people write them', () => {
  assert.equal(countText(1, 'variable'), '1 variable');
  assert.equal(countText(10000, 'variable'), '10,000 variables');
  assert.equal(countText(2, 'block in fault', 'blocks in fault'), '2 blocks in fault');
  assert.deepEqual([0.412, 61.2, 999, 1311.2].map(millisecondsText), ['0.41 ms', '61 ms', '1000 ms', '1.3 s']);
});
