// Keeps the stream of events open and feeds the store.
//
// States of store.connection:
//   connecting  nothing has come yet
//   live        events come
//   renewing    the server has ended the stream as agreed, and the next one is being opened; values are current. A
//               window that is hidden waits until it is seen: a browser has few connections to a server, and the
//               server few streams
//   lost        no connection; values are old since `since`. Tried again, at first after a second, at most each 10 s
//   refused     the program does not know this browser: the link that it prints has to be opened again
//   ended       the run has ended

import {ApiError} from './api.js';

const WaitsMs = [1000, 2000, 5000, 10000];
const CheckMs = 2000;

// The stream sends something after each cycle. Silence for longer than this is asked about.
const silenceMs = (plant) => 10000 + 3 * Math.max(1000, ...plant.blocks.map((block) => block.period_ms ?? 0));

class Connection {
  #api;
  #store;
  #close = null;
  #attempts = 0;
  #heard = Date.now();
  #newest = '';
  #isWaiting = false;

  constructor(api, store) {
    this.#api = api;
    this.#store = store;
    document.addEventListener('visibilitychange', () => this.#resume());
    setInterval(() => this.#checkSilence(), CheckMs);
  }

  async open() {
    try {
      await this.#load();
      this.#listen();
    } catch (error) {
      this.#retry(error);
    }
  }

  // Another start of the program has other variables perhaps, so that the page begins again.
  async #load() {
    const [session, plant] = await Promise.all([this.#api.session(), this.#api.plant()]);
    if (!this.#store.plant) {
      this.#store.load(session, plant);
    } else if (plant.started !== this.#store.plant.started) {
      location.reload();
    }
  }

  #listen() {
    let isOpen = false;
    this.#close = this.#api.stream({
      opened: () => {
        this.#heard = Date.now();
        isOpen = true;
        this.#readEvents();
      },
      failed: () => (isOpen ? this.#retry() : this.#explain()),
      block: this.#hear((cycle) => this.#store.apply(cycle)),
      changes: this.#hear((changes) => this.#store.apply(changes)),
      event: this.#hear((event) => this.#store.addEvent(event)),
      outlets: this.#hear(({outlets}) => this.#store.setOutlets(outlets)),
      lost: this.#hear(({updates}) => this.#store.skip(updates)),
      renew: () => this.#renew(),
      end: ({reason}) => this.#stop('ended', reason),
    }, this.#newest);
  }

  // Wraps what is done with the data of an event: the stream is live with each.
  #hear(act) {
    return (data, id) => {
      this.#heard = Date.now();
      this.#attempts = 0;
      this.#newest = id;
      this.#store.connect('live');
      act(data);
    };
  }

  // The stream begins with the state of the plant, but without the events before it.
  async #readEvents() {
    try {
      const {events} = await this.#api.events(this.#store.events.at(-1)?.id ?? 0);
      events.forEach((event) => this.#store.addEvent(event));
    } catch {
      // Without a connection the stream fails too, which says so.
    }
  }

  #renew() {
    this.#stop('renewing');
    this.#isWaiting = document.hidden;
    if (!this.#isWaiting) {
      this.#listen();
    }
  }

  #resume() {
    if (this.#isWaiting && !document.hidden) {
      this.#isWaiting = false;
      this.#listen();
    }
  }

  #stop(state, reason) {
    this.#close?.();
    this.#close = null;
    this.#store.connect(state, reason);
  }

  #retry(error) {
    if (error instanceof ApiError && (error.status === 401 || error.status === 403)) {
      this.#stop('refused', error.message);
      return;
    }
    this.#newest = '';
    this.#stop('lost', error?.message ?? '');
    setTimeout(() => this.open(), WaitsMs[Math.min(this.#attempts, WaitsMs.length - 1)]);
    this.#attempts += 1;
  }

  // A stream that did not open has no reason: the program does not answer, or it has no stream left.
  async #explain() {
    this.#stop('lost');
    try {
      await this.#api.session();
      this.#retry(new Error('The program has no event stream left: close other windows of this page'));
    } catch (error) {
      this.#retry(error);
    }
  }

  // A connection can be dead without an error, for example when the network has gone.
  async #checkSilence() {
    if (!this.#close || Date.now() - this.#heard < silenceMs(this.#store.plant)) {
      return;
    }
    this.#heard = Date.now();
    try {
      await this.#api.session();
    } catch (error) {
      this.#retry(error);
    }
  }
}

// Resolves after the first attempt, whether it has succeeded or not.
export const startConnection = (api, store) => new Connection(api, store).open();
