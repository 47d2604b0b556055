// The trend of a variable: a graph, and the same in words, of a range of time that ends now.
//
// makeTrend(variable, api) returns {element, unmount, add, advance}. Points are read from the program when a range is
// chosen, and the values of the stream are added as they come. All times are those of the plant.
//   add(time, value, kind)   a value of the stream: its time in ms, a number or null, and the kind of its quality
//   advance(time)            the time of the plant, in ms: the range ends there

import {offsetMs} from './format.js';
import {withoutBad} from './trend-figures.js';
import {TrendGraph, loadLibrary} from './trend-graph.js';
import {TrendWords} from './trend-words.js';
import {make, setAttribute, setText} from './dom.js';

// In hours.
const Ranges = [['15 min', 0.25], ['1 h', 1], ['4 h', 4], ['24 h', 24], ['7 d', 168], ['30 d', 720], ['All', 24 * 366]];
const Longest = Ranges.at(-1)[1];
const Minute = 60000;
const Hour = 60 * Minute;
const DrawMs = 1000;

class Trend {
  #variable;
  #api;
  #graph;
  #words;
  #link;
  #hours = 1;
  #trend = null;
  #timer = 0;
  #isMounted = true;
  #buttons = Ranges.map(([title, hours]) =>
    make('button', {type: 'button', onclick: () => this.#choose(hours)}, title));
  #retheme = () => {
    this.#graph.clear();
    this.#draw();
  };

  constructor(variable, api) {
    const offset = offsetMs(variable.block.now?.time);
    this.#variable = variable;
    this.#api = api;
    this.#graph = new TrendGraph(variable, offset);
    this.#words = new TrendWords(variable, offset);
    this.#link = make('a.button', {download: `trend-${variable.id}.csv`}, 'CSV');
    this.element = make('section.panel.trend', {'aria-labelledby': 'trend-title'},
      make('div.panel-head', {}, make('h2', {id: 'trend-title'}, 'Trend'),
        make('div.segments', {role: 'group', 'aria-label': 'Range of time'}, this.#buttons), this.#link),
      this.#graph.element, this.#graph.readout, this.#words.message, this.#words.figures, this.#words.quality);
    this.#choose(this.#hours);
    window.addEventListener('themechange', this.#retheme);
  }

  add(time, value, kind) {
    if (this.#trend) {
      const last = this.#trend.points.at(-1);
      if (!last || last[0] < time) {
        this.#trend.points.push(...withoutBad([[time, value, kind]]));
      }
      this.advance(time);
    }
  }

  // The end moves with the time of the plant, and old points leave a range that moves.
  advance(time) {
    if (this.#trend) {
      this.#trend.to = Math.max(this.#trend.to, time);
      this.#begin();
      this.#timer ||= setTimeout(() => this.#draw(), DrawMs);
    }
  }

  unmount() {
    this.#isMounted = false;
    clearTimeout(this.#timer);
    window.removeEventListener('themechange', this.#retheme);
    this.#graph.clear();
  }

  #choose(hours) {
    this.#hours = hours;
    this.#buttons.forEach((button, index) => setAttribute(button, 'aria-pressed', String(Ranges[index][1] === hours)));
    setAttribute(this.#link, 'href', `/api/variables/${this.#variable.id}/trend.csv?hours=${Math.ceil(hours)}`);
    this.#read();
  }

  async #read() {
    try {
      const [answer] = await Promise.all([
        this.#api.trend(this.#variable.id, Math.ceil(this.#hours)), loadLibrary(),
      ]);
      if (this.#isMounted) {
        this.#trend = {...answer, points: withoutBad(answer.points)};
        this.#graph.clear();
        this.#begin();
        this.#draw();
      }
    } catch (error) {
      setText(this.#words.message, error.message);
    }
  }

  // The range ends now. It begins where the values begin, if that is later, but shows a minute at least. (The program
  // knows whole hours only.)
  #begin() {
    const {from, to, oldest} = this.#trend;
    const range = this.#hours === Longest ? Infinity : this.#hours * Hour;
    this.#trend.from = Math.min(Math.max(to - range, oldest ?? from), to - Minute);
    this.#dropOld();
  }

  // The value that was in force at the beginning stays.
  #dropOld() {
    const {points, from} = this.#trend;
    const first = points.findIndex(([time]) => time > from);
    points.splice(0, (first < 0 ? points.length : first) - 1);
  }

  #draw() {
    this.#timer = 0;
    if (this.#isMounted && this.#trend) {
      this.#words.show(this.#trend);
      this.#graph.draw(this.#trend);
    }
  }
}

export const makeTrend = (variable, api) => new Trend(variable, api);
