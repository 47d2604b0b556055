// Keeps the stream of events open and feeds the store.
//
// States of store.connection:
//   connecting  nothing has come yet
//   live        events come
//   renewing    the server has ended the stream as agreed, and the next one is being opened; values are current. A window
//               that is hidden waits until it is seen: a browser has few connections to a server, and the server few
//               streams
//   lost        no connection; values are old since `since`. Tried again, at first after a second, at most each 10 s
//   refused     the program does not know this browser: the link that it prints has to be opened again
//   ended       the run has ended

import {ApiError} from './api.js';

const WaitsMs = [1000, 2000, 5000, 10000];

// The stream sends something after each cycle. Silence for longer than this is asked about.
const silenceMs = (plant) => 10000 + 3 * Math.max(1000, ...plant.blocks.map((block) => block.period_ms ?? 0));

export function startConnection(api, store) {
  let close = null;
  let attempts = 0;
  let heard = Date.now();
  let newest = '';
  let isWaiting = false;

  function stop(state, reason) {
    close?.();
    close = null;
    store.connect(state, reason);
  }

  function retry(error) {
    if (error instanceof ApiError && (error.status === 401 || error.status === 403)) {
      stop('refused', error.message);
      return;
    }
    newest = '';
    stop('lost', error?.message ?? '');
    setTimeout(open, WaitsMs[Math.min(attempts, WaitsMs.length - 1)]);
    attempts += 1;
  }

  // Another start of the program has other variables perhaps, so that the page begins again.
  async function load() {
    const [session, plant] = await Promise.all([api.session(), api.plant()]);
    if (!store.plant) {
      store.load(session, plant);
    } else if (plant.started !== store.plant.started) {
      location.reload();
    }
  }

  // The stream begins with the state of the plant, but without the events before it.
  async function readEvents() {
    try {
      (await api.events(store.events.at(-1)?.id ?? 0)).events.forEach(store.addEvent);
    } catch {
      // Without a connection the stream fails too, which says so.
    }
  }

  function listen() {
    let isOpen = false;
    const hear = (act) => (data, id) => {
      heard = Date.now();
      attempts = 0;
      newest = id;
      store.connect('live');
      act(data);
    };
    close = api.stream({
      opened: () => {
        heard = Date.now();
        isOpen = true;
        readEvents();
      },
      failed: () => (isOpen ? retry() : explain()),
      block: hear(store.apply),
      changes: hear(store.apply),
      event: hear(store.addEvent),
      lost: hear(({updates}) => store.skip(updates)),
      renew: () => {
        stop('renewing');
        isWaiting = document.hidden;
        if (!isWaiting) {
          listen();
        }
      },
      end: ({reason}) => stop('ended', reason),
    }, newest);
  }

  document.addEventListener('visibilitychange', () => {
    if (isWaiting && !document.hidden) {
      isWaiting = false;
      listen();
    }
  });

  // A stream that did not open has no reason: the program does not answer, or it has no stream left.
  async function explain() {
    stop('lost');
    try {
      await api.session();
      retry(new Error('The program has no event stream left: close other windows of this page'));
    } catch (error) {
      retry(error);
    }
  }

  async function open() {
    try {
      await load();
      listen();
    } catch (error) {
      retry(error);
    }
  }

  // A connection can be dead without an error, for example when the network has gone.
  setInterval(async () => {
    if (!close || Date.now() - heard < silenceMs(store.plant)) {
      return;
    }
    heard = Date.now();
    try {
      await api.session();
    } catch (error) {
      retry(error);
    }
  }, 2000);

  return open();
}
