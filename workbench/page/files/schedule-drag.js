// Mouse and keys on the rows of an editor. Calls:
//
//   select(row, index)              an entry has the focus or was pressed
//   preview(row, index, toRow, at)  during a drag; returns the words of the new place, or null if it is taken
//   drop()  cancel()                the end of a drag
//   nudge(row, index, step)  remove(row, index)  edit(row, index)  add(row, at)  go(row, index, rows)

import {make} from './dom.js';
import {hour, minute} from './schedule-time.js';
import {timeAt} from './schedule-track.js';

const Step = 5 * minute;
const Threshold = 4;

const narrow = () => matchMedia('(max-width: 44rem)').matches;

function placeOf(element) {
  const bar = element.closest?.('.schedule-bar');
  return bar ? {row: Number(bar.dataset.row), index: Number(bar.dataset.index)} : null;
}

function trackUnder(rows, y, fallback) {
  const tracks = [...rows.querySelectorAll('.schedule-track')];
  return tracks.find((track) => {
    const {top, bottom} = track.getBoundingClientRect();
    return y >= top && y < bottom;
  }) ?? tracks.find((track) => Number(track.dataset.row) === fallback);
}

function createTip() {
  const tip = make('div.schedule-tip', {hidden: true});
  document.body.append(tip);
  return {
    show(text, x, y) {
      tip.textContent = text;
      tip.hidden = false;
      tip.style.left = `${Math.max(8, Math.min(x + 14, innerWidth - tip.offsetWidth - 8))}px`;
      tip.style.top = `${Math.max(8, y - tip.offsetHeight - 12)}px`;
    },
    hide: () => { tip.hidden = true; },
    remove: () => tip.remove(),
  };
}

function keyActions(target, on) {
  const {row, index} = target;
  const sideways = (sign) => (event) => on.nudge(row, index, sign * (event.shiftKey ? 1 : 15) * minute);
  return {
    ArrowLeft: sideways(-1),
    ArrowRight: sideways(1),
    ArrowUp: () => on.go(row, index, -1),
    ArrowDown: () => on.go(row, index, 1),
    PageDown: () => on.nudge(row, index, -60 * minute),
    PageUp: () => on.nudge(row, index, 60 * minute),
    Delete: () => on.remove(row, index),
    Backspace: () => on.remove(row, index),
    Enter: () => on.edit(row, index),
    ' ': () => on.edit(row, index),
  };
}

function onKey(event, on) {
  if (event.ctrlKey || event.metaKey || event.altKey) {
    return;
  }
  const target = placeOf(event.target);
  const row = event.target.closest('.schedule-row')?.dataset.row;
  const isField = event.target.matches('input, select, textarea');
  const action = target ? keyActions(target, on)[event.key] : null;
  if (action) {
    event.preventDefault();
    action(event);
  } else if (event.key.toLowerCase() === 'n' && row !== undefined && !isField) {
    event.preventDefault();
    on.add(Number(row), null);
  }
}

class Drag {
  constructor(rows, on, tip) {
    Object.assign(this, {rows, on, tip, start: null, moved: false});
  }

  down(event) {
    const target = placeOf(event.target);
    if (!target || event.button !== 0) {
      return;
    }
    // A field that is left applies its value, which draws the rows again.
    document.activeElement?.blur();
    this.on.select(target.row, target.index);
    const track = this.rows.querySelector(`.schedule-track[data-row="${target.row}"]`);
    const isLoose = event.target.closest('.schedule-loose') !== null;
    if (narrow() || isLoose) {
      return;
    }
    event.preventDefault();
    this.start = {...target, x: event.clientX, y: event.clientY, grip: timeAt(track, event.clientX, 1)};
    this.moved = false;
  }

  move(event) {
    if (!this.start || (!this.moved && Math.hypot(event.clientX - this.start.x, event.clientY - this.start.y) < Threshold)) {
      return;
    }
    if (!this.moved) {
      this.rows.setPointerCapture(event.pointerId);
      this.moved = true;
    }
    this.rows.classList.add('is-dragging');
    const track = trackUnder(this.rows, event.clientY, this.start.row);
    const {row, index, grip} = this.start;
    const from = this.on.timeOf(row, index);
    const wanted = from + timeAt(track, event.clientX, 1) - grip;
    const at = Math.min(Math.max(Math.round(wanted / Step) * Step, 0), 24 * hour - Step);
    const words = this.on.preview(row, index, Number(track.dataset.row), at);
    this.tip.show(words ?? 'Another entry has this time', event.clientX, event.clientY);
  }

  end(isDrop) {
    if (this.start && this.moved) {
      isDrop ? this.on.drop() : this.on.cancel();
    }
    this.start = null;
    this.rows.classList.remove('is-dragging');
    this.tip.hide();
  }
}

// Returns a function that removes what is outside of the rows.
export function listen(rows, on) {
  const tip = createTip();
  const drag = new Drag(rows, on, tip);
  const onEscape = (event) => {
    if (event.key === 'Escape' && drag.moved && drag.start) {
      drag.end(false);
    }
  };
  rows.addEventListener('pointerdown', (event) => drag.down(event));
  rows.addEventListener('pointermove', (event) => drag.move(event));
  rows.addEventListener('pointerup', () => drag.end(true));
  rows.addEventListener('pointercancel', () => drag.end(false));
  rows.addEventListener('keydown', (event) => onKey(event, on));
  rows.addEventListener('focusin', (event) => {
    const target = placeOf(event.target);
    if (target) {
      on.select(target.row, target.index);
    }
  });
  rows.addEventListener('dblclick', (event) => {
    const row = event.target.closest('.schedule-track')?.dataset.row;
    if (row !== undefined && !narrow()) {
      const track = rows.querySelector(`.schedule-track[data-row="${row}"]`);
      on.add(Number(row), timeAt(track, event.clientX, Step));
    }
  });
  document.addEventListener('keydown', onEscape);
  return () => {
    document.removeEventListener('keydown', onEscape);
    tip.remove();
  };
}
