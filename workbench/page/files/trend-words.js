// What a trend says, in words: the latest, lowest and highest value, the range of time that is shown, and the times
// without good quality.
//
// new TrendWords(variable, offset): offset in ms is that of the plant from UTC.
//   message, figures, quality    elements for the page; message is also for what goes wrong
//   show(trend)                  the words of {from, to, points}, times in ms

import {Nothing} from './format.js';
import {bandsOf, figuresOf, numberValueText, pointTime, spansDays} from './trend-figures.js';
import {make, setText} from './dom.js';

const Titles = ['Latest', 'Minimum', 'Maximum', 'Shown'];
const MostBands = 3;

export class TrendWords {
  message = make('p.dim', {role: 'status'});
  quality = make('p.dim');
  #values = Titles.map(() => make('dd'));
  figures = make('dl.figures-list', {},
    Titles.map((title, index) => make('div', {}, make('dt', {}, title), this.#values[index])));
  #variable;
  #offset;

  constructor(variable, offset) {
    this.#variable = variable;
    this.#offset = offset;
  }

  show(trend) {
    const timeOf = (ms) => pointTime(ms, this.#offset, spansDays(trend));
    const {latest, minimum, maximum} = figuresOf(trend.points);
    const pointText = (point) =>
      (point ? `${numberValueText(this.#variable, point[1])} at ${timeOf(point[0])}` : Nothing);
    const shown = `${timeOf(trend.from)} to ${timeOf(trend.to)}`;
    [pointText(latest), pointText(minimum), pointText(maximum), shown].forEach((text, index) =>
      setText(this.#values[index], text));
    setText(this.quality, this.#qualityText(bandsOf(trend.points, trend.to), timeOf));
    setText(this.message, trend.points.length ? '' : 'No value has been kept for this range of time yet.');
  }

  #qualityText(bands, timeOf) {
    if (!bands.length) {
      return '';
    }
    const words = bands.slice(-MostBands).map(([from, to, kind]) => `${kind} ${timeOf(from)} to ${timeOf(to)}`);
    return `Shaded, not good: ${bands.length > MostBands ? 'latest ' : ''}${words.join('; ')}`;
  }
}
