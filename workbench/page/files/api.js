// The HTTP interface of the page, one function a request (docs/page.md).
//
// Each function returns a promise of the JSON object of the answer. It rejects with an ApiError: `status` is the status
// of HTTP, 0 if there was no answer, `message` a text for people, `body` the object of the answer, or null. The token of
// the session is read once and sent with each POST. Integers of more digits than a number can hold arrive as text.

const PatienceMs = 20000;

export class ApiError extends Error {
  constructor(status, message, body = null) {
    super(message);
    this.status = status;
    this.body = body;
  }
}

// A value of 16 digits or more becomes a text: "value":12345678901234567890. A quotation mark inside a text is
// escaped, so that the pattern only matches names.
export function parseJson(text) {
  return JSON.parse(text.replace(/("value":)(-?\d{16,})(?=[,}\s])/g, '$1"$2"'));
}

async function bodyOf(response) {
  try {
    return parseJson(await response.text());
  } catch {
    return null;
  }
}

async function request(path, options = {}) {
  let response;
  try {
    response = await fetch(path, {credentials: 'same-origin', signal: AbortSignal.timeout(PatienceMs), ...options});
  } catch (error) {
    throw new ApiError(0, error.name === 'TimeoutError' ? 'The program does not answer' : 'No connection to the program');
  }
  const body = await bodyOf(response);
  if (!response.ok) {
    throw new ApiError(response.status, body?.error ?? body?.reason ?? `The program answers ${response.status}`, body);
  }
  if (body === null) {
    throw new ApiError(response.status, 'The answer of the program cannot be read');
  }
  return body;
}

export function createApi() {
  let token = '';
  const post = (path, body) => request(path, {
    method: 'POST',
    headers: {'Content-Type': 'application/json', 'X-Page-Token': token},
    body: JSON.stringify(body),
  });
  return {
    async session() {
      const session = await request('/api/session');
      token = session.token;
      return session;
    },
    plant: () => request('/api/plant'),
    values: () => request('/api/values'),
    events: (after = 0) => request(`/api/events?after=${after}`),
    variable: (id) => request(`/api/variables/${id}`),
    trend: (id, hours) => request(`/api/variables/${id}/trend?hours=${hours}`),
    device: (id) => request(`/api/variables/${id}/device`),
    schedule: (id, year) => request(`/api/variables/${id}/schedule?year=${year}`),
    composeSchedule: (id, model) => post(`/api/variables/${id}/schedule`, {model}),
    write: (id, value) => post(`/api/variables/${id}/write`, {value}),

    // Opens the stream of events. `handlers` has functions by the name of the event, called with its object and its id,
    // and `opened` and `failed`, called without. With `after`, the id of the last event that came, the stream goes on
    // after it. Returns a function that closes it; nothing is called after that.
    stream(handlers, after = '') {
      const source = new EventSource(`/api/stream${after && `?after=${encodeURIComponent(after)}`}`);
      for (const name of ['block', 'changes', 'event', 'outlets', 'lost', 'renew', 'end']) {
        source.addEventListener(name, (message) => handlers[name]?.(parseJson(message.data || '{}'), message.lastEventId));
      }
      source.onopen = () => handlers.opened?.();
      source.onerror = () => handlers.failed?.();
      return () => source.close();
    },
  };
}
