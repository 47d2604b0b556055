// Which variables a table shows, and in which order.
import {strict as assert} from 'node:assert';
import {test} from 'node:test';

import {isLive, predicateOf, sorted} from '../../../workbench/page/files/choice.js';

const ahu = {id: 0, name: 'AHU North'};
const chiller = {id: 1, name: 'Chiller'};

function variable(name, value, more = {}) {
  const {block = ahu, object = 'analog-input 1', status = '0x00000000', quality = 'Good', suspect, write, ...rest} = more;
  return {name, block, object, property: 'present-value', kind: typeof value === 'boolean' ? 'boolean' : 'number', unit: null,
    writable: false, changedAt: 0, now: value === undefined ? null : {value, status, quality, suspect, write}, ...rest};
}

const names = (variables) => variables.map(({name}) => name);
const chosen = (variables, choice, time = 0) => names(variables.filter((each) => predicateOf(choice)(each, time)));

test('each word of a search has to occur, in any letter case and any field', () => {
  const all = [variable('Supply air', 21.5, {unit: '°C'}), variable('Supply fan', true, {object: 'binary-output 1'}),
    variable('Return air', 20, {block: chiller, description: 'In the duct'})];
  assert.deepEqual(chosen(all, {text: 'SUPPLY'}), ['Supply air', 'Supply fan']);
  assert.deepEqual(chosen(all, {text: 'air supply'}), ['Supply air']);
  assert.deepEqual(chosen(all, {text: 'binary 1'}), ['Supply fan']);
  assert.deepEqual(chosen(all, {text: 'chiller duct'}), ['Return air']);
  assert.deepEqual(chosen(all, {text: '21.5 °c'}), ['Supply air']);
  assert.deepEqual(chosen(all, {text: ' '}), names(all));
  assert.deepEqual(chosen(all, {text: 'boiler'}), []);
});

test('a search finds a quality and a suspect', () => {
  const all = [variable('A', 1, {status: '0x808C0000', quality: 'Sensor failure'}), variable('B', 2, {suspect: 'device: unknown-object'})];
  assert.deepEqual(chosen(all, {text: 'sensor'}), ['A']);
  assert.deepEqual(chosen(all, {text: 'unknown-object'}), ['B']);
});

test('filters have to hold together', () => {
  const all = [variable('Bad', 1, {status: '0x80000000'}), variable('Bad and writable', 1, {status: '0x80000000', writable: true}),
    variable('Writable', 1, {writable: true}), variable('Not read'), variable('Uncertain', 1, {status: '0x40000000'})];
  assert.deepEqual(chosen(all, {only: ['bad']}), ['Bad', 'Bad and writable']);
  assert.deepEqual(chosen(all, {only: ['bad', 'writable']}), ['Bad and writable']);
  assert.deepEqual(chosen(all, {only: ['uncertain']}), ['Uncertain']);
  assert.deepEqual(chosen(all, {block: 1}), []);
  assert.deepEqual(chosen(all, {block: 0, only: ['writable']}), ['Bad and writable', 'Writable']);
});

test('lately is within the last minute', () => {
  const all = [variable('Never', 1), variable('Lately', 1, {changedAt: 950000}), variable('Before', 1, {changedAt: 900000})];
  assert.deepEqual(chosen(all, {only: ['changed']}, 1000000), ['Lately']);
});

test('names are in the order of their numbers, and descending is the reverse', () => {
  const all = [variable('Room 10', 1), variable('room 2', 1), variable('Attic', 1)];
  assert.deepEqual(names(sorted(all, {column: 'name', descending: false})), ['Attic', 'room 2', 'Room 10']);
  assert.deepEqual(names(sorted(all, {column: 'name', descending: true})), ['Room 10', 'room 2', 'Attic']);
  assert.deepEqual(names(sorted(all, null)), names(all));
  assert.deepEqual(names(sorted(all, {column: 'colour', descending: false})), names(all));
});

test('numbers are before texts, and what has no value is last in both directions', () => {
  const all = [variable('None'), variable('Text', 'nan'), variable('Ten', 10), variable('True', true), variable('Minus', -3),
    variable('Long', '12345678901234567890')];
  assert.deepEqual(names(sorted(all, {column: 'value', descending: false})), ['Minus', 'True', 'Ten', 'Long', 'Text', 'None']);
  assert.deepEqual(names(sorted(all, {column: 'value', descending: true})), ['Text', 'Long', 'Ten', 'True', 'Minus', 'None']);
});

test('equal keys keep the order of the project in both directions', () => {
  const all = [variable('First', 5), variable('Second', 5), variable('Third', 5)];
  for (const descending of [false, true]) {
    assert.deepEqual(names(sorted(all, {column: 'value', descending})), names(all));
    assert.deepEqual(names(sorted(all, {column: 'block', descending})), names(all));
  }
});

test('problems are first by quality, and failures first by write', () => {
  const all = [variable('Good', 1), variable('Uncertain', 1, {status: '0x40000000', quality: 'Uncertain'}),
    variable('Suspect', 1, {suspect: 'device: unknown-object'}), variable('Bad', 1, {status: '0x80000000', quality: 'Bad'})];
  assert.deepEqual(names(sorted(all, {column: 'quality', descending: false})), ['Bad', 'Uncertain', 'Suspect', 'Good']);
  const written = [variable('None', 1), variable('Written', 1, {write: {state: 'written'}}), variable('Refused', 1, {write: {state: 'refused'}})];
  assert.deepEqual(names(sorted(written, {column: 'write', descending: false})), ['Refused', 'Written', 'None']);
});

test('the newest change is first', () => {
  const all = [variable('Never', 1), variable('Before', 1, {changedAt: 1}), variable('Lately', 1, {changedAt: 2})];
  assert.deepEqual(names(sorted(all, {column: 'changed', descending: false})), ['Lately', 'Before', 'Never']);
});

test('a choice follows values only where values decide', () => {
  assert.equal(isLive({}, null), false);
  assert.equal(isLive({only: ['writable']}, {column: 'name'}), false);
  assert.equal(isLive({only: ['bad']}, null), true);
  assert.equal(isLive({}, {column: 'value'}), true);
  assert.equal(isLive({text: '21'}, null), true);
});
