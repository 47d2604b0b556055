// What a person types to set a variable.
import {strict as assert} from 'node:assert';
import {test} from 'node:test';

import {entryText, mistakeIn, priorityText} from '../../../workbench/page/files/write-entry.js';

test('a number may have a sign, an exponent and its unit', () => {
  for (const text of ['21.5', ' -3 ', '+.5', '5.', '1e-3', '21.5 °C', '21.5°C', '40 %', '21.5 degrees-celsius', 'nan', '-inf']) {
    assert.equal(mistakeIn(text, {kind: 'number'}), '', text);
  }
});

test('another text is not a number, and the message has it', () => {
  for (const text of ['abc', '21,5', '1.2.3', '--1', '12 34', '.']) {
    assert.equal(mistakeIn(text, {kind: 'number'}), `"${text}" is not a number such as 21.5.`);
  }
  assert.equal(mistakeIn(' ', {kind: 'number'}), 'Give a value first.');
});

test('a text may be anything, also empty', () => {
  assert.equal(mistakeIn('', {kind: 'text'}), '');
  assert.equal(mistakeIn('abc', {kind: 'text'}), '');
  assert.equal(mistakeIn('', {kind: 'time'}), 'Give a value first.');
});

test('the unit is shown once', () => {
  assert.equal(entryText('21.5', '°C'), '21.5 °C');
  assert.equal(entryText('21.5 °C', '°C'), '21.5 °C');
  assert.equal(entryText(' 7 ', null), '7');
});

test('a priority is a number, none, that of the device, or not known', () => {
  assert.deepEqual([{priority: 8}, {priority: 0}, {priority: null}, {}].map(priorityText),
    ['8', 'the default of the device', 'none', 'as the project has it']);
});
