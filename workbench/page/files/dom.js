// Makes elements without markup in texts: a child that is a text becomes a text node, whatever it contains.

// make('a.brand', {href: '#/'}, 'Plant', icon): properties are set as attributes; a function is a listener ('onclick'),
// true an empty attribute, and null, undefined and false are left out. Children may be nested arrays, and null.
export function make(kind, attributes = {}, ...children) {
  const [name, ...classes] = kind.split('.');
  const element = document.createElement(name || 'div');
  if (classes.length) {
    element.className = classes.join(' ');
  }
  for (const [key, value] of Object.entries(attributes)) {
    if (typeof value === 'function') {
      element.addEventListener(key.slice(2), value);
    } else if (value !== null && value !== undefined && value !== false) {
      element.setAttribute(key, value === true ? '' : value);
    }
  }
  element.append(...children.flat(Infinity).filter((child) => child !== null && child !== undefined && child !== false));
  return element;
}

// Sets the text only if it is another one: the same text costs no layout and is not read aloud again.
export function setText(element, text) {
  if (element.textContent !== text) {
    element.textContent = text;
  }
}

export function setAttribute(element, name, value) {
  if (value === null || value === undefined || value === false) {
    element.removeAttribute(name);
  } else if (element.getAttribute(name) !== String(value)) {
    element.setAttribute(name, String(value));
  }
}

// Says it to a screen reader, in the live region of the page.
export function announce(text) {
  document.getElementById('announcer').textContent = text;
}

// Calls `draw` at most once a frame, however often the returned function is called.
export function everyFrame(draw) {
  let frame = 0;
  const schedule = () => {
    frame ||= requestAnimationFrame(() => {
      frame = 0;
      draw();
    });
  };
  schedule.cancel = () => {
    cancelAnimationFrame(frame);
    frame = 0;
  };
  return schedule;
}

// Draws a list, but not while the focus is in it: then when the focus has left it, so that no link is lost under the
// hands of somebody who uses the keyboard.
export function sparingFocus(list, draw) {
  let isDue = false;
  const attempt = () => {
    isDue = list.contains(document.activeElement);
    if (!isDue) {
      draw();
    }
  };
  list.addEventListener('focusout', () => isDue && setTimeout(attempt));
  return attempt;
}
