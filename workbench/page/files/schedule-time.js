// Times of day of a schedule. Internally a time is a number of hundredths of a second since midnight; the JSON form is
// "HH:MM", "HH:MM:SS" or "HH:MM:SS.hh" with "*" for an unspecified part. A time with "*" has no place on an axis: NaN.

export const minute = 6000;
export const hour = 60 * minute;
export const day = 24 * hour;

export const weekdays = ['Monday', 'Tuesday', 'Wednesday', 'Thursday', 'Friday', 'Saturday', 'Sunday'];
export const months = ['January', 'February', 'March', 'April', 'May', 'June', 'July', 'August', 'September',
  'October', 'November', 'December'];

const form = /^(\d{1,2}|\*):(\d{1,2}|\*)(?::(\d{1,2}|\*)(?:\.(\d{1,2}|\*))?)?$/;

function parts(text) {
  const found = form.exec(text);
  return found ? [found[1], found[2], found[3] ?? '0', found[4] ?? '0'] : null;
}

export function instant(text) {
  const fields = parts(text);
  if (!fields || fields.includes('*')) return NaN;
  const [hours, minutes, seconds, hundredths] = fields.map(Number);
  return hours * hour + minutes * minute + seconds * 100 + hundredths;
}

const two = (number) => String(Math.floor(number)).padStart(2, '0');

// The shortest form: seconds and hundredths only if they are not zero.
export function timeText(at) {
  const text = `${two(at / hour)}:${two(at % hour / minute)}`;
  const seconds = Math.floor(at % minute / 100);
  const hundredths = at % 100;
  if (hundredths) return `${text}:${two(seconds)}.${two(hundredths)}`;
  return seconds ? `${text}:${two(seconds)}` : text;
}

// What a person types: "6", "615", "0615", "6.15", "6:15", "06:15:30", "*:30". Null if it is not a time.
export function typedTime(typed) {
  const text = typed.trim();
  if (/^\d{1,2}$/.test(text)) return checked(`${text}:00`);
  if (/^\d{3,4}$/.test(text)) return checked(`${text.slice(0, -2)}:${text.slice(-2)}`);
  return checked(text.includes(':') ? text : text.replace(/[.,]/, ':'));
}

function checked(text) {
  const fields = parts(text);
  if (!fields) return null;
  const most = [23, 59, 59, 99];
  if (fields.some((field, index) => field !== '*' && Number(field) > most[index])) return null;
  if (!fields.includes('*')) return timeText(instant(text));
  return text.split(/(?=[:.])/).map((part) => part.replace(/\d+/, (digits) => digits.padStart(2, '0'))).join('');
}

// The order of entries in a list: by time; those with an unspecified part last.
export function compareTimes(left, right) {
  const [a, b] = [instant(left), instant(right)];
  if (Number.isNaN(a) || Number.isNaN(b)) return Number.isNaN(a) - Number.isNaN(b);
  return a - b;
}
