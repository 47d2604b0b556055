// The periods of an exception schedule: their days in a year, and how they begin in a form. The server words them.
//
// A date has year, month, day and weekday, each null if unspecified; month 13 and 14 are the odd and the even months,
// day 32 is the last of the month, 33 and 34 are the odd and the even days. Week 1 has the days 1 to 7, week 6 the
// last seven days, 7 to 9 the seven days before those, and so on (ASHRAE 135, BACnetWeekNDay).

export const kinds = {
  date: 'A day', range: 'From … to …', 'week-and-day': 'A weekday of a week', calendar: 'A calendar of the device',
};

export function dayText(date) {
  return date.toISOString().slice(0, 10);
}

// A date as the months and days are counted, without a time zone.
function dateOf(year, month, dayOfMonth) {
  const date = new Date(Date.UTC(2000, month, dayOfMonth));
  date.setUTCFullYear(year, month, dayOfMonth);
  return date;
}

export function daysOfYear(year) {
  const days = [];
  for (let date = dateOf(year, 0, 1); date.getUTCFullYear() === year; date = new Date(date.getTime() + 86400000)) {
    days.push(date);
  }
  return days;
}

export const weekdayOf = (date) => (date.getUTCDay() + 6) % 7 + 1;

export function daysInMonth(year, month) {
  return dateOf(year, month, 0).getUTCDate();
}

function matchesMonth(month, actual) {
  if (month === null || month === undefined) return true;
  if (month === 13 || month === 14) return actual % 2 === 14 - month;
  return month === actual;
}

function matchesDay(dayOfMonth, date) {
  if (dayOfMonth === null || dayOfMonth === undefined) return true;
  const actual = date.getUTCDate();
  if (dayOfMonth === 32) return actual === daysInMonth(date.getUTCFullYear(), date.getUTCMonth() + 1);
  if (dayOfMonth === 33 || dayOfMonth === 34) return actual % 2 === 34 - dayOfMonth;
  return dayOfMonth === actual;
}

function matchesWeek(week, date) {
  if (week === null || week === undefined) return true;
  const fromStart = Math.ceil(date.getUTCDate() / 7);
  const last = daysInMonth(date.getUTCFullYear(), date.getUTCMonth() + 1);
  return week < 6 ? fromStart === week : Math.floor((last - date.getUTCDate()) / 7) === week - 6;
}

const isFree = (field) => field === null || field === undefined;

function matchesDate(date, actual) {
  return (isFree(date.year) || date.year === actual.getUTCFullYear()) &&
    matchesMonth(date.month, actual.getUTCMonth() + 1) && matchesDay(date.day, actual) &&
    (isFree(date.weekday) || date.weekday === weekdayOf(actual));
}

export function isWholeDate(date) {
  return !isFree(date.year) && date.month >= 1 && date.month <= 12 && date.day >= 1 && date.day <= 31;
}

// "YYYY-MM-DD" of a whole date.
export const wholeDateText = ({year, month, day}) =>
  [String(year).padStart(4, '0'), String(month).padStart(2, '0'), String(day).padStart(2, '0')].join('-');

export const isOpen = (date) => isFree(date.year) && isFree(date.month) && isFree(date.day);

// An unspecified end is open; a date that is partly unspecified limits nothing that could be counted.
function matchesRange(period, actual) {
  const text = dayText(actual);
  if (![period.from, period.to].every((date) => isOpen(date) || isWholeDate(date))) return false;
  return (isOpen(period.from) || wholeDateText(period.from) <= text) &&
    (isOpen(period.to) || text <= wholeDateText(period.to));
}

function matches(period, actual) {
  switch (period.kind) {
  case 'date': return matchesDate(period.date, actual);
  case 'range': return matchesRange(period, actual);
  case 'week-and-day':
    return matchesMonth(period.month, actual.getUTCMonth() + 1) && matchesWeek(period.week, actual) &&
      (isFree(period.weekday) || period.weekday === weekdayOf(actual));
  default: return false;
  }
}

// "YYYY-MM-DD" of each day of the year that the period covers. The days of a calendar are only in the device: none.
export function daysOf(period, year) {
  return daysOfYear(year).filter((date) => matches(period, date)).map(dayText);
}

export function dateFields(text) {
  const date = new Date(`${text}T00:00:00Z`);
  return {year: date.getUTCFullYear(), month: date.getUTCMonth() + 1, day: date.getUTCDate(), weekday: weekdayOf(date)};
}

// The weekday of a whole date follows from it; the others keep what they have.
export function withWeekday(date) {
  if (!isWholeDate(date) || isFree(date.weekday)) return date;
  return {...date, weekday: weekdayOf(dateOf(date.year, date.month - 1, date.day))};
}

// A day that the month never has is none, whatever the year; 29 February is one in every year of a date without a year.
export function isCalendarDay({year, month, day}) {
  const isCounted = month >= 1 && month <= 12 && day >= 1 && day <= 31;
  return !isCounted || day <= daysInMonth(year ?? 2000, month);
}

export function newPeriod(kind, text) {
  const date = dateFields(text);
  switch (kind) {
  case 'range': return {kind, from: date, to: date};
  case 'week-and-day':
    return {kind, month: date.month, week: Math.min(Math.ceil(date.day / 7), 5), weekday: date.weekday};
  case 'calendar': return {kind, instance: 1};
  default: return {kind, date};
  }
}
