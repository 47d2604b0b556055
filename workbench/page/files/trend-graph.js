// The graph of a trend, drawn by dygraphs in the colours of the theme. A value holds until the next point, so that the
// line has steps; times without good quality are shaded. A user can select a part of the time with the mouse: it stays
// until the selection is undone, whatever is drawn.
//
// new TrendGraph(variable, offset): offset in ms is that of the plant from UTC. Hidden from screen readers, for which
// trend-words.js says the same.
//   element, readout     for the page: the graph, and the point below the mouse in words
//   draw(trend)          draws {from, to, points}, times in ms; nothing until loadLibrary() has resolved
//   clear()              forgets what was drawn, with its colours and the part that is selected; also ends it

import {numberText} from './format.js';
import {bandsOf, numberValueText, pointTime, rowsOf, spansDays} from './trend-figures.js';
import {make, setText} from './dom.js';

let library = null;

// Its legend writes style attributes, which the security policy of the page forbids.
function withoutLegend(Dygraph) {
  Dygraph.PLUGINS = Dygraph.PLUGINS.filter((plugin) => plugin !== Dygraph.Plugins.Legend);
  return Dygraph;
}

// Loads dygraphs once; after a failure the next call tries again.
export function loadLibrary() {
  library ??= new Promise((resolve, reject) => {
    const script = make('script', {src: '/dygraph.min.js'});
    script.onload = () => {
      resolve(withoutLegend(window.Dygraph));
    };
    script.onerror = () => {
      library = null;
      reject(new Error('The graph cannot be drawn: dygraph.min.js is missing.'));
    };
    document.head.append(script);
  });
  return library;
}

// The colours of the tokens, as a canvas takes them.
function colours(element) {
  const probe = make('span', {hidden: true});
  element.append(probe);
  const of = (token) => {
    probe.style.color = `var(--${token})`;
    return getComputedStyle(probe).color;
  };
  const found = {
    line: of('accent'), grid: of('line'), axis: of('edge'), bad: of('bad-wash'), uncertain: of('warn-wash'),
  };
  probe.remove();
  return found;
}

// The library writes the texts of axes as markup.
const asMarkup = (text) => text.replaceAll('&', '&amp;').replaceAll('<', '&lt;').replaceAll('>', '&gt;');

function stateAxis(variable) {
  const isBoolean = variable.kind === 'boolean';
  const numbers = isBoolean ? [0, 1] : (variable.states ?? []).map((text, index) => index + 1);
  if (!numbers.length) {
    return {};
  }
  const label = (number) => (isBoolean ? variable.states?.[number] || String(number === 1)
    : variable.states[number - 1] || String(number));
  return {
    valueRange: [numbers[0] - 0.4, numbers.at(-1) + 0.4],
    ticker: () => numbers.map((number) => ({v: number, label: asMarkup(label(number))})),
    axisLabelWidth: 96,
  };
}

// Touching the graph has to scroll the page, so that only the mouse selects a range of time.
function mouseOnly(model) {
  return Object.fromEntries(Object.entries(model).filter(([name]) => !name.startsWith('touch')));
}

export class TrendGraph {
  element = make('div.plot', {'aria-hidden': 'true'});
  readout = make('p.readout.dim', {'aria-hidden': 'true'});
  #variable;
  #offset;
  #trend = null;
  #graph = null;
  #drawnSpan = null;

  constructor(variable, offset) {
    this.#variable = variable;
    this.#offset = offset;
  }

  draw(trend) {
    this.#trend = trend;
    this.element.hidden = !trend.points.length;
    if (!window.Dygraph || this.element.hidden) {
      return;
    }
    if (!this.#graph) {
      const options = {...this.#options(), dateWindow: this.#span()};
      this.#graph = new window.Dygraph(this.element, this.#rows(), options);
    } else {
      this.#graph.updateOptions({file: this.#rows(), ...(this.#isZoomed() ? {} : {dateWindow: this.#span()})});
    }
  }

  clear() {
    this.#drawnSpan = null;
    this.#graph?.destroy();
    this.#graph = null;
  }

  // The library draws in UTC; times with the offset of the plant are shown in the time of the plant.
  #rows() {
    return rowsOf(this.#trend.points, this.#trend.to).map(([time, value]) => [new Date(time + this.#offset), value]);
  }

  #span() {
    return [this.#trend.from + this.#offset, this.#trend.to + this.#offset];
  }

  // Whether the user has selected a part of the range of time that was drawn last.
  #isZoomed() {
    const [from, to] = this.#graph.xAxisRange();
    const drawn = this.#drawnSpan;
    const isZoomed = drawn && (Math.abs(from - drawn[0]) > 1 || Math.abs(to - drawn[1]) > 1);
    if (!isZoomed) {
      this.#drawnSpan = this.#span();
    }
    return isZoomed;
  }

  #options() {
    const {line, grid, axis} = this.#colours();
    const yAxis = {axisLabelFormatter: (number) => asMarkup(numberText(number)), axisLabelWidth: 64};
    return {
      labels: ['Time', 'Value'], labelsUTC: true, legend: 'never', stepPlot: true, colors: [line], strokeWidth: 1.6,
      gridLineColor: grid, axisLineColor: axis, highlightCircleSize: 4, rightGap: 8, axisLabelFontSize: 12,
      interactionModel: mouseOnly(window.Dygraph.defaultInteractionModel),
      axes: {x: {drawGrid: true}, y: {...yAxis, ...stateAxis(this.#variable)}},
      underlayCallback: (canvas, area, drawn) => this.#shade(canvas, area, drawn),
      highlightCallback: (event, time, [point]) => setText(this.readout, this.#readoutText(time, point)),
      unhighlightCallback: () => setText(this.readout, ''),
    };
  }

  // The content of the element itself belongs to the library.
  #colours() {
    return colours(this.element.parentElement);
  }

  #readoutText(time, point) {
    return point && Number.isFinite(point.yval)
      ? `${pointTime(time, 0, spansDays(this.#trend))}  ${numberValueText(this.#variable, point.yval)}` : '';
  }

  #shade(canvas, area, drawn) {
    const {bad, uncertain} = this.#colours();
    for (const [from, to, kind] of bandsOf(this.#trend.points, this.#trend.to)) {
      const left = drawn.toDomXCoord(from + this.#offset);
      canvas.fillStyle = kind === 'bad' ? bad : uncertain;
      canvas.fillRect(left, area.y, Math.max(2, drawn.toDomXCoord(to + this.#offset) - left), area.h);
    }
  }
}
