import assert from 'node:assert/strict';
import { test } from 'node:test';

import {
    daysOf, daysOfYear, isCalendarDay, isWholeDate, newPeriod, wholeDateText, withWeekday,
} from '../../../workbench/page/files/schedule-period.js';

const date = (year, month, day, weekday = null) => ({ year, month, day, weekday });
const any = date(null, null, null);

test('a whole date is one day of its year only', () => {
    assert.deepEqual(daysOf({ kind: 'date', date: date(2026, 12, 25, 5) }, 2026), ['2026-12-25']);
    assert.deepEqual(daysOf({ kind: 'date', date: date(2026, 12, 25, 5) }, 2027), []);
});

test('unspecified parts of a date match all', () => {
    assert.deepEqual(daysOf({ kind: 'date', date: date(null, 1, 1) }, 2031), ['2031-01-01']);
    assert.equal(daysOf({ kind: 'date', date: date(2026, null, null, 1) }, 2026).length, 52);
    assert.equal(daysOf({ kind: 'date', date: any }, 2028).length, 366);
});

test('the last day of a month follows leap years', () => {
    assert.deepEqual(daysOf({ kind: 'date', date: date(null, 2, 32) }, 2028), ['2028-02-29']);
    assert.deepEqual(daysOf({ kind: 'date', date: date(null, 2, 32) }, 2027), ['2027-02-28']);
});

test('odd and even months and days are matched', () => {
    assert.deepEqual(daysOf({ kind: 'date', date: date(2026, 13, 15) }, 2026).map((day) => day.slice(5, 7)), ['01', '03', '05', '07', '09', '11']);
    assert.deepEqual(daysOf({ kind: 'date', date: date(2026, 14, 15) }, 2026).map((day) => day.slice(5, 7)), ['02', '04', '06', '08', '10', '12']);
    assert.deepEqual(daysOf({ kind: 'date', date: date(2026, 2, 33) }, 2026).length, 14);
    assert.deepEqual(daysOf({ kind: 'date', date: date(2026, 2, 34) }, 2026).at(-1), '2026-02-28');
});

test('a range has both its ends and passes over the new year', () => {
    const winter = { kind: 'range', from: date(2026, 12, 30, 3), to: date(2027, 1, 2, 6) };
    assert.deepEqual(daysOf(winter, 2026), ['2026-12-30', '2026-12-31']);
    assert.deepEqual(daysOf(winter, 2027), ['2027-01-01', '2027-01-02']);
});

test('an unspecified end of a range is open', () => {
    assert.equal(daysOf({ kind: 'range', from: any, to: date(2026, 1, 3) }, 2026).length, 3);
    assert.equal(daysOf({ kind: 'range', from: date(2026, 12, 30), to: any }, 2026).length, 2);
});

test('weeks of a month count from its start, the sixth from its end', () => {
    const december = (week, weekday) => daysOf({ kind: 'week-and-day', month: 12, week, weekday }, 2026);
    assert.deepEqual(december(6, 5), ['2026-12-25']);
    assert.deepEqual(december(1, 2), ['2026-12-01']);
    assert.deepEqual(december(5, null), ['2026-12-29', '2026-12-30', '2026-12-31']);
    assert.equal(december(7, null)[0], '2026-12-18');
    assert.equal(daysOf({ kind: 'week-and-day', month: null, week: null, weekday: 1 }, 2026).length, 52);
});

test('the days of a calendar of the device are not known', () => {
    assert.deepEqual(daysOf({ kind: 'calendar', instance: 7 }, 2026), []);
});

test('a year has all its days, also before 1970', () => {
    assert.deepEqual([2026, 2028, 1900, 2000].map((year) => daysOfYear(year).length), [365, 366, 365, 366]);
});

test('a new period begins at the chosen day', () => {
    assert.deepEqual(newPeriod('date', '2026-12-25').date, date(2026, 12, 25, 5));
    assert.deepEqual(newPeriod('week-and-day', '2026-12-30'), { kind: 'week-and-day', month: 12, week: 5, weekday: 3 });
});

test('the weekday of a whole date is corrected, that of others is kept', () => {
    assert.equal(withWeekday(date(2026, 12, 25, 1)).weekday, 5);
    assert.equal(withWeekday(date(null, 12, 25, 1)).weekday, 1);
    assert.equal(withWeekday(date(2026, 12, 25)).weekday, null);
});

test('a day that its month does not have is reported', () => {
    assert.ok(!isCalendarDay(date(2026, 2, 29)));
    assert.ok(isCalendarDay(date(2028, 2, 29)));
});

test('a day that its month has in no year is reported', () => {
    assert.ok(!isCalendarDay(date(null, 2, 30)));
    assert.ok(!isCalendarDay(date(null, 4, 31)));
    assert.ok(isCalendarDay(date(null, 2, 29)));
    assert.ok(isCalendarDay(date(null, 2, 32)));
    assert.ok(isCalendarDay(date(null, 13, 31)));
});

test('a whole date has a text, with zeroes before short numbers', () => {
    assert.equal(wholeDateText(date(2026, 3, 9, 1)), '2026-03-09');
    assert.ok(isWholeDate(date(2026, 3, 9)));
    assert.ok(!isWholeDate(date(2026, 13, 9)));
    assert.ok(!isWholeDate(date(2026, 3, 32)));
    assert.ok(!isWholeDate(date(2026, 3, null)));
});
