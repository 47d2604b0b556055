// The trend of a variable: the graph of dygraphs in the colours of the theme, and the same in words. A value holds until
// the next point, so that the line has steps. Times without good quality are shaded, and words say so.
//
// makeTrend(variable, api) returns {element, unmount}. Points are read from the program when a range is chosen, and the
// values of the stream are added as they come. All times are those of the plant.

import {Nothing, numberText, offsetMs, valueText} from './format.js';
import {bandsOf, figuresOf, pointTime, rowsOf, withoutBad} from './trend-figures.js';
import {make, setAttribute, setText} from './dom.js';

const Ranges = [['15 min', 0.25], ['1 h', 1], ['4 h', 4], ['All', 24 * 366]];
const Minute = 60000;
const Hour = 60 * Minute;
const DrawMs = 1000;

let library = null;

// Its legend writes style attributes, which the security policy of the page forbids.
function withoutLegend(Dygraph) {
  Dygraph.PLUGINS = Dygraph.PLUGINS.filter((plugin) => plugin !== Dygraph.Plugins.Legend);
  return Dygraph;
}

function loadLibrary() {
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

// A number of the trend as a value of the variable, with its state text or unit.
function textOf(variable, number) {
  if (variable.kind === 'boolean') {
    const value = number !== 0;
    return valueText(variable, {value, stateText: variable.states?.[Number(value)]});
  }
  return valueText(variable, {value: number, stateText: variable.kind === 'state' ? variable.states?.[number - 1] : undefined});
}

function stateAxis(variable) {
  const isBoolean = variable.kind === 'boolean';
  const numbers = isBoolean ? [0, 1] : (variable.states ?? []).map((text, index) => index + 1);
  if (!numbers.length) {
    return {};
  }
  return {
    valueRange: [numbers[0] - 0.4, numbers.at(-1) + 0.4],
    ticker: () => numbers.map((number) => ({
      v: number,
      label: asMarkup(isBoolean ? variable.states?.[number] || String(number === 1) : variable.states[number - 1] || String(number)),
    })),
    axisLabelWidth: 96,
  };
}

// Touching the graph has to scroll the page, so that only the mouse selects a range of time.
function mouseOnly(model) {
  return Object.fromEntries(Object.entries(model).filter(([name]) => !name.startsWith('touch')));
}

export function makeTrend(variable, api) {
  let hours = 1;
  let trend = null;
  let graph = null;
  let timer = 0;
  let isMounted = true;
  const offset = offsetMs(variable.block.now?.time);

  const buttons = Ranges.map(([title, value]) => make('button', {type: 'button', onclick: () => choose(value)}, title));
  const plot = make('div.plot', {'aria-hidden': 'true'});
  const readout = make('p.readout.dim', {'aria-hidden': 'true'});
  const message = make('p.dim', {role: 'status'});
  const cells = ['Latest', 'Minimum', 'Maximum', 'Shown'].map((title) => {
    const value = make('dd');
    return {value, element: make('div', {}, make('dt', {}, title), value)};
  });
  const quality = make('p.dim');
  const link = make('a.button', {download: `trend-${variable.id}.csv`}, 'CSV');
  const element = make('section.panel.trend', {'aria-labelledby': 'trend-title'},
    make('div.panel-head', {}, make('h2', {id: 'trend-title'}, 'Trend'),
      make('div.segments', {role: 'group', 'aria-label': 'Range of time'}, buttons), link),
    plot, readout, message, make('dl.figures-list', {}, cells.map((cell) => cell.element)), quality);

  const isAll = () => hours === Ranges.at(-1)[1];
  const isLong = () => trend.to - trend.from > 20 * Hour;
  const timeOf = (ms) => pointTime(ms, offset, isLong());
  const pointText = (point) => (point ? `${textOf(variable, point[1])} at ${timeOf(point[0])}` : Nothing);

  function describe() {
    const {latest, minimum, maximum} = figuresOf(trend.points);
    [latest, minimum, maximum].forEach((point, index) => setText(cells[index].value, pointText(point)));
    setText(cells[3].value, `${timeOf(trend.from)} to ${timeOf(trend.to)}`);
    const bands = bandsOf(trend.points, trend.to);
    const words = bands.slice(-3).map(([from, to, kind]) => `${kind} ${timeOf(from)} to ${timeOf(to)}`);
    setText(quality, bands.length ? `Shaded, not good: ${bands.length > 3 ? 'latest ' : ''}${words.join('; ')}` : '');
    setText(message, trend.points.length ? '' : 'No value has been kept for this range of time yet.');
  }

  function shade(canvas, area, drawn) {
    const {bad, uncertain} = colours(element);
    for (const [from, to, kind] of bandsOf(trend.points, trend.to)) {
      const left = drawn.toDomXCoord(from + offset);
      canvas.fillStyle = kind === 'bad' ? bad : uncertain;
      canvas.fillRect(left, area.y, Math.max(2, drawn.toDomXCoord(to + offset) - left), area.h);
    }
  }

  // The library draws in UTC; times with the offset of the plant are shown in the time of the plant.
  const rows = () => rowsOf(trend.points, trend.to).map(([time, value]) => [new Date(time + offset), value]);
  const span = () => [trend.from + offset, trend.to + offset];

  function options() {
    const {line, grid, axis} = colours(element);
    const {Dygraph} = window;
    return {
      labels: ['Time', 'Value'], labelsUTC: true, legend: 'never', stepPlot: true, colors: [line], strokeWidth: 1.6,
      gridLineColor: grid, axisLineColor: axis, highlightCircleSize: 4, rightGap: 8,
      axisLabelFontSize: 12, interactionModel: mouseOnly(Dygraph.defaultInteractionModel), underlayCallback: shade,
      axes: {y: {axisLabelFormatter: (number) => asMarkup(numberText(number)), axisLabelWidth: 64, ...stateAxis(variable)},
        x: {drawGrid: true}},
      highlightCallback: (event, time, [point]) => setText(readout,
        point && Number.isFinite(point.yval) ? `${pointTime(time, 0, isLong())}  ${textOf(variable, point.yval)}` : ''),
      unhighlightCallback: () => setText(readout, ''),
    };
  }

  function draw() {
    timer = 0;
    if (!isMounted || !trend) {
      return;
    }
    describe();
    plot.hidden = !trend.points.length;
    if (!window.Dygraph || plot.hidden) {
      return;
    }
    if (!graph) {
      graph = new window.Dygraph(plot, rows(), {...options(), dateWindow: span()});
    } else {
      graph.updateOptions({file: rows(), ...(isZoomed() ? {} : {dateWindow: span()})});
    }
  }

  // The range of time that was drawn last is kept while the user has selected a part of it.
  let drawnSpan = null;
  function isZoomed() {
    const [from, to] = graph.xAxisRange();
    const zoomed = drawnSpan && (Math.abs(from - drawnSpan[0]) > 1 || Math.abs(to - drawnSpan[1]) > 1);
    if (!zoomed) {
      drawnSpan = span();
    }
    return zoomed;
  }

  async function read() {
    try {
      const [answer] = await Promise.all([api.trend(variable.id, Math.ceil(hours)), loadLibrary()]);
      if (isMounted) {
        trend = {...answer, points: withoutBad(answer.points)};
        drawnSpan = null;
        graph?.destroy();
        graph = null;
        begin();
        draw();
      }
    } catch (error) {
      setText(message, error.message);
    }
  }

  // The range ends now. It begins where the values begin, if that is later, but shows a minute at least. (The program
  // knows whole hours only.)
  function begin() {
    const range = isAll() ? Infinity : hours * Hour;
    trend.from = Math.min(Math.max(trend.to - range, trend.oldest ?? trend.from), trend.to - Minute);
    dropOld();
  }

  // The value that was in force at the beginning stays.
  function dropOld() {
    const first = trend.points.findIndex(([time]) => time > trend.from);
    trend.points.splice(0, (first < 0 ? trend.points.length : first) - 1);
  }

  function choose(value) {
    hours = value;
    buttons.forEach((button, index) => setAttribute(button, 'aria-pressed', String(Ranges[index][1] === hours)));
    setAttribute(link, 'href', `/api/variables/${variable.id}/trend.csv?hours=${Math.ceil(hours)}`);
    read();
  }

  function retheme() {
    graph?.destroy();
    graph = null;
    draw();
  }

  // The end moves with the time of the plant, and old points leave a range that moves.
  function advance(to) {
    trend.to = Math.max(trend.to, to);
    begin();
    timer ||= setTimeout(draw, DrawMs);
  }

  choose(hours);
  window.addEventListener('themechange', retheme);
  return {
    element,
    // A value of the stream: its time in ms, a number or null, and the kind of its quality.
    add(time, value, kind) {
      if (trend) {
        const last = trend.points.at(-1);
        if (!last || last[0] < time) {
          trend.points.push(...withoutBad([[time, value, kind]]));
        }
        advance(time);
      }
    },
    advance(time) {
      if (trend) {
        advance(time);
      }
    },
    unmount() {
      isMounted = false;
      clearTimeout(timer);
      window.removeEventListener('themechange', retheme);
      graph?.destroy();
    },
  };
}
