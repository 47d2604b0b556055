// States as a mark, a word and a colour together. Each function returns an element, or updates one that it has returned.

import {BlockSigns, BlockWords, QualitySigns, WriteSigns, WriteWords, qualityKind, valueText} from './format.js';
import {make, setText} from './dom.js';

const QualityTones = {good: 'plain', uncertain: 'warn', bad: 'bad'};
const BlockTones = {ok: 'good', fault: 'bad', standby: 'plain', waiting: 'warn'};
const WriteTones = {pending: 'warn', written: 'good', unconfirmed: 'warn', differs: 'bad', refused: 'bad'};

// An empty sign; setSign fills it.
export const makeSign = () => make('span.sign', {}, make('i', {'aria-hidden': 'true'}), make('span.sign-text'));

export function setSign(element, tone, mark, text) {
  const name = `sign ${tone}`;
  if (element.className !== name) {
    element.className = name;
  }
  setText(element.firstChild, mark);
  setText(element.lastChild, text);
  return element;
}

export const sign = (tone, mark, text) => setSign(makeSign(), tone, mark, text);

// "Good", "Sensor failure".
export function setQuality(element, now) {
  if (!now) {
    return setSign(element, 'plain', '', '');
  }
  const kind = qualityKind(now.status);
  return setSign(element, QualityTones[kind], kind === 'good' ? '' : QualitySigns[kind], now.quality);
}

// "suspect, device: unknown-object"; nothing for any other value.
export const setSuspect = (element, now) => now?.suspect
  ? setSign(element, 'warn', QualitySigns.uncertain, `suspect, ${now.suspect}`)
  : setSign(element, 'plain', '', '');

// "Good", "Sensor failure", "suspect: unknown-object" where the quality is good, else with the quality: for one line of a
// table.
export function setQualityAndSuspect(element, now) {
  setQuality(element, now);
  if (!now?.suspect) {
    return element;
  }
  const quality = qualityKind(now.status) === 'good' ? '' : `${now.quality}, `;
  return setSign(element, element.classList.contains('bad') ? 'bad' : 'warn', QualitySigns.uncertain,
    `${quality}suspect: ${now.suspect.replace(/^device: /, '')}`);
}

// "OK", "FAULT No connection".
export function setBlockState(element, state, error) {
  const text = state === 'fault' && error ? `${BlockWords.fault} ${error}` : BlockWords[state];
  return setSign(element, BlockTones[state], BlockSigns[state], text);
}

// "21.5 °C pending", "200 differs (-56)"; nothing if nothing has been set.
export function setWrite(element, variable, write) {
  if (!write) {
    return setSign(element, 'plain', '', '');
  }
  const device = write.state === 'differs' && write.device ? ` (${write.device})` : '';
  const text = `${valueText(variable, write)} ${WriteWords[write.state] ?? write.state}${device}`;
  return setSign(element, WriteTones[write.state] ?? 'plain', WriteSigns[write.state] ?? '', text);
}

const EventTones = {
  fault: ['bad', '\u2715'], recovery: ['good', '\u2713'], refused: ['bad', '\u2715'], differs: ['bad', '\u2260'],
  unconfirmed: ['warn', '?'], written: ['good', '\u2713'], suspect: ['warn', '\u25B2'], 'suspect-end': ['good', '\u2713'],
  standby: ['plain', '\u2016'], 'standby-end': ['good', '\u2713'], set: ['plain', '\u2192'],
};

// "suspect-end" is "suspect end" for people.
export const eventWords = (kind) => kind.replaceAll('-', ' ');

export function eventSign(kind) {
  const [tone, mark] = EventTones[kind] ?? ['plain', '\u00B7'];
  return sign(tone, mark, eventWords(kind));
}
