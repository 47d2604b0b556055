// The value of a variable in large, with its unit, quality, age and the state of its block.
//
// new PresentValue(variable) has `element`, a panel; draw(hasChanged) shows the present state, with a short highlight
// if the value has changed.

import {qualityKind, shortTime, valueParts} from './format.js';
import {make, setText} from './dom.js';
import {makeSign, setBlockState, setQuality, setSuspect} from './signs.js';
import {blockState} from './store.js';

// A value of more characters is set smaller: a long one, and a text of several lines.
const Long = 12;
const Text = 60;

function changeText({now, changedTime}) {
  if (!now?.time) {
    return 'Not read yet';
  }
  return changedTime ? `Changed at ${shortTime(changedTime)}` : 'No change since the page was opened';
}

export class PresentValue {
  #variable;
  #main = make('span.big-value');
  #side = make('span.big-side.dim');
  #big = make('div.big', {}, this.#main, this.#side);
  #quality = makeSign();
  #suspect = makeSign();
  #time = make('span.dim');
  #block = makeSign();
  #flash = 'a';
  element = make('section.panel.now', {'aria-label': 'Present value'}, this.#big,
    make('div.now-line', {}, this.#quality, this.#suspect), make('div.now-line', {}, this.#time),
    make('div.now-line', {}, make('span.dim', {}, 'Block'), this.#block));

  constructor(variable) {
    this.#variable = variable;
  }

  draw(hasChanged) {
    const {now, block} = this.#variable;
    this.#drawValue(valueParts(this.#variable));
    this.#drawQuality(now);
    setText(this.#time, changeText(this.#variable));
    setBlockState(this.#block, blockState(block.now), block.now?.error);
    if (hasChanged) {
      this.#flash = this.#flash === 'a' ? 'b' : 'a';
      this.#big.className = `big flash-${this.#flash}`;
    }
  }

  #drawValue({main, side}) {
    setText(this.#main, main);
    setText(this.#side, side);
    this.#main.classList.toggle('long', main.length > Long);
    this.#main.classList.toggle('text', main.length > Text);
  }

  // Other than in a table, good is a sign too.
  #drawQuality(now) {
    setQuality(this.#quality, now);
    if (now && qualityKind(now.status) === 'good') {
      this.#quality.className = 'sign good';
      setText(this.#quality.firstChild, '\u2713');
    }
    setSuspect(this.#suspect, now);
  }
}
