// What a trend says in numbers.
import {strict as assert} from 'node:assert';
import {test} from 'node:test';

import {bandsOf, figuresOf, pointTime, rowsOf, withoutBad} from '../../../workbench/page/files/trend-figures.js';

const points = [[1000, 21, 'good'], [2000, null, 'bad'], [3000, 25, 'uncertain'], [4000, 19, 'uncertain'], [5000, 20, 'good']];

test('the latest, the lowest and the highest value have their times', () => {
  assert.deepEqual(figuresOf(points), {latest: [5000, 20], minimum: [4000, 19], maximum: [3000, 25]});
});

test('without a number there are no figures', () => {
  assert.deepEqual(figuresOf([[1000, null, 'bad']]), {latest: null, minimum: null, maximum: null});
  assert.deepEqual(figuresOf([]), {latest: null, minimum: null, maximum: null});
});

test('the first of equal extremes counts', () => {
  assert.deepEqual(figuresOf([[1, 5, 'good'], [2, 5, 'good']]), {latest: [2, 5], minimum: [1, 5], maximum: [1, 5]});
});

test('times without good quality are bands, joined where the quality is the same', () => {
  assert.deepEqual(bandsOf(points, 9000), [[2000, 3000, 'bad'], [3000, 5000, 'uncertain']]);
  assert.deepEqual(bandsOf([[1000, null, 'bad']], 9000), [[1000, 9000, 'bad']]);
  assert.deepEqual(bandsOf([], 9000), []);
});

test('the last value is held to the end, but not a bad one', () => {
  assert.deepEqual(rowsOf([[1000, 21, 'good']], 9000), [[1000, 21], [9000, 21]]);
  assert.deepEqual(rowsOf([[1000, null, 'bad']], 9000), [[1000, null]]);
  assert.deepEqual(rowsOf([[1000, 21, 'good']], 1000), [[1000, 21]]);
  assert.deepEqual(rowsOf([], 9000), []);
});

test('a point has the time of the plant', () => {
  const ms = Date.parse('2026-11-21T23:30:33Z');
  assert.equal(pointTime(ms, 3600000), '00:30:33');
  assert.equal(pointTime(ms, 3600000, true), '2026-11-22 00:30:33');
});

test('a bad value is a gap and counts in no figure', () => {
  const kept = withoutBad([[1000, 21, 'good'], [2000, 99, 'bad'], [3000, 22, 'uncertain']]);
  assert.deepEqual(kept, [[1000, 21, 'good'], [2000, null, 'bad'], [3000, 22, 'uncertain']]);
  assert.deepEqual(figuresOf(withoutBad([[1000, 99, 'bad']])).latest, null);
});
