// Values, qualities, writes and times in words. Pure functions: nothing here touches the page.

const Minus = '\u2212';
export const Nothing = '\u2013';

// 'good', 'uncertain' or 'bad', by the top two bits of a status such as "0x808C0000".
export function qualityKind(status) {
  return ['good', 'uncertain', 'bad', 'bad'][parseInt(status.slice(2, 3), 16) >> 2];
}

// At most seven digits that count, as many as a Float has. A whole number keeps all of its digits.
export function numberText(value) {
  if (!Number.isFinite(value)) {
    return String(value);
  }
  const text = Number.isInteger(value) ? String(value) : String(Number(value.toPrecision(7)));
  return text.replace(/^-/, Minus);
}

// For a column of a table: at most three places after the point, or four digits that count of a number below 1.
export function briefNumberText(value) {
  const places = Math.abs(value) < 1 ? Number(value.toPrecision(4)) : Number(value.toFixed(3));
  return numberText(Number.isFinite(value) ? places : value);
}

// "2026-11-21 09:30:33" of a time in ISO 8601, in the offset of the plant; without the date if that is today's.
export function timeText(iso, today = '') {
  if (!iso) {
    return Nothing;
  }
  const date = iso.slice(0, 10);
  const time = iso.slice(11, 19);
  return date === today ? time : `${date} ${time}`;
}

// The offset of a time in ms, such as "+01:00" at its end; 0 for "Z".
export function offsetMs(iso) {
  const [, sign, hours, minutes] = /([+-])(\d\d):(\d\d)$/.exec(iso ?? '') ?? [];
  return sign ? (sign === '-' ? -1 : 1) * (Number(hours) * 60 + Number(minutes)) * 60000 : 0;
}

// The present date in the offset of such a time, "2026-11-21".
export const todayAt = (iso, clock = Date.now()) => new Date(clock + offsetMs(iso)).toISOString().slice(0, 10);

// "21:30:33", or with the date if it is not today.
export const shortTime = (iso, clock) => timeText(iso, iso ? todayAt(iso, clock) : '');

// "4.4 ms", "1.3 s".
export function millisecondsText(value) {
  return value < 1000 ? `${Number(value.toPrecision(2))} ms` : `${Number((value / 1000).toPrecision(2))} s`;
}

// The value as people read it: {main, side}. `side` is the unit, or the number of a state.
export function valueParts(variable, now = variable.now, textOf = numberText) {
  const value = now?.value;
  if (value === null || value === undefined) {
    return {main: Nothing, side: ''};
  }
  if (variable.kind === 'weekly' || variable.kind === 'exception') {
    return {main: `${variable.kind} schedule`, side: ''};
  }
  if (now.stateText) {
    return {main: now.stateText, side: typeof value === 'number' ? String(value) : ''};
  }
  const main = typeof value === 'number' ? textOf(value) : String(value);
  if (variable.kind === 'time' && /^\d{4}-\d\d-\d\dT/.test(main)) {
    return {main: timeText(main), side: ''};
  }
  return {main, side: variable.unit ?? now.unit ?? ''};
}

export function valueText(variable, now = variable.now) {
  const {main, side} = valueParts(variable, now);
  if (!side) {
    return main;
  }
  return now.stateText ? `${main} (${side})` : `${main} ${side}`;
}

export const QualitySigns = {good: '\u2713', uncertain: '\u25B2', bad: '\u2715'};

export const BlockWords = {ok: 'OK', fault: 'FAULT', standby: 'STANDBY', waiting: 'waiting'};
export const BlockSigns = {ok: '\u2713', fault: '\u2715', standby: '\u2016', waiting: '\u2026'};

export const WriteWords = {
  pending: 'pending', written: 'written', unconfirmed: 'unconfirmed', differs: 'differs', refused: 'refused',
};
export const WriteSigns = {pending: '\u2026', written: '\u2713', unconfirmed: '?', differs: '\u2260', refused: '\u2715'};

// "10,000".
export const groupedText = (number) => String(number).replace(/\B(?=(\d{3})+$)/g, ',');

// "1 variable", "10,000 variables".
export const countText = (number, one, many = `${one}s`) => `${groupedText(number)} ${number === 1 ? one : many}`;
