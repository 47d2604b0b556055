// #/schedules: the schedules of the plant, by block, with what they are and the state of a write.

import {make, everyFrame} from './dom.js';
import {makeSign, setQuality, setWrite} from './signs.js';

const Words = {weekly: 'Week', exception: 'Exceptions'};

function makeLine(variable) {
  const quality = makeSign();
  const write = makeSign();
  const draw = () => {
    setQuality(quality, variable.now);
    setWrite(write, variable, variable.now?.write);
  };
  draw();
  return {draw, element: make('li', {}, make('a', {href: `#/schedules/${variable.id}`}, variable.name),
    make('span.dim', {}, `${Words[variable.kind]}, ${variable.object}${variable.writable ? '' : ', read-only'}`), quality, write)};
}

export function mount(element, {store}) {
  const lines = new Map();
  const due = new Set();
  const isSchedule = ({kind}) => kind in Words;
  const sections = store.blocks.filter((block) => block.variables.some(isSchedule)).map((block) => {
    const list = block.variables.filter(isSchedule).map((variable) => {
      const line = makeLine(variable);
      lines.set(variable, line);
      return line.element;
    });
    return make('section.panel', {}, make('h2', {}, block.name), make('ul.lines', {}, list));
  });
  element.append(make('div.page-head', {}, make('h1', {}, 'Schedules')),
    sections.length ? make('div.columns', {}, sections)
      : make('p.dim', {}, 'The project has no variable with the property weekly-schedule or exception-schedule.'));
  const draw = everyFrame(() => {
    due.forEach((variable) => lines.get(variable).draw());
    due.clear();
  });
  const end = store.on('values', (variables) => {
    variables.filter((variable) => lines.has(variable)).forEach((variable) => due.add(variable));
    draw();
  });
  return () => {
    end();
    draw.cancel();
  };
}
