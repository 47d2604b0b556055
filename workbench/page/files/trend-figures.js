// What a trend says in numbers, and how its points are drawn. Pure functions on the points of
// /api/variables/ID/trend: [ms, number or null, "good" | "uncertain" | "bad"], oldest first.

import {valueText} from './format.js';

const Hour = 3600000;

// A bad value is not known: the line has a gap there, and the figures leave it out.
export const withoutBad = (points) =>
  points.map(([time, value, quality]) => [time, quality === 'bad' ? null : value, quality]);

// {latest, minimum, maximum} as [ms, number], each null without a number.
export function figuresOf(points) {
  const figures = {latest: null, minimum: null, maximum: null};
  for (const [time, value] of points) {
    if (value === null) {
      continue;
    }
    figures.latest = [time, value];
    if (!figures.minimum || value < figures.minimum[1]) {
      figures.minimum = [time, value];
    }
    if (!figures.maximum || value > figures.maximum[1]) {
      figures.maximum = [time, value];
    }
  }
  return figures;
}

// [from, to, quality] of each time without good quality, in ms. A quality holds until the next point, the last one to
// the end.
export function bandsOf(points, end) {
  const bands = [];
  points.forEach(([time, , quality], index) => {
    if (quality === 'good') {
      return;
    }
    const to = points[index + 1]?.[0] ?? end;
    const before = bands.at(-1);
    if (before && before[2] === quality && before[1] === time) {
      before[1] = to;
    } else {
      bands.push([time, to, quality]);
    }
  });
  return bands;
}

// Rows of [ms, number or null]. The last value is held until `end`, where it is not bad.
export function rowsOf(points, end) {
  const rows = points.map(([time, value]) => [time, value]);
  const last = rows.at(-1);
  if (last && last[1] !== null && last[0] < end) {
    rows.push([end, last[1]]);
  }
  return rows;
}

// "09:30:33" in the offset of the plant, with the date if the times are of several days.
export function pointTime(ms, offset, withDate = false) {
  const text = new Date(ms + offset).toISOString();
  return withDate ? `${text.slice(0, 10)} ${text.slice(11, 19)}` : text.slice(11, 19);
}

// Whether the times of a trend need their date.
export const spansDays = ({from, to}) => to - from > 20 * Hour;

// A number of the trend as a value of the variable, with its state text or unit.
export function numberValueText(variable, number) {
  if (variable.kind === 'boolean') {
    const value = number !== 0;
    return valueText(variable, {value, stateText: variable.states?.[Number(value)]});
  }
  const stateText = variable.kind === 'state' ? variable.states?.[number - 1] : undefined;
  return valueText(variable, {value: number, stateText});
}
