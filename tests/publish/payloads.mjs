// Payloads of Sparkplug B as JSON, and back.
import sparkplug from 'sparkplug-payload';

const {encodePayload, decodePayload} = sparkplug.get('spBv1.0');

// Numbers that JSON lacks, and those beyond 2^53, are texts.
function plain(value) {
  if (typeof value === 'number') {
    return Number.isFinite(value) ? value : String(value);
  }
  if (typeof value === 'object' && value !== null && 'unsigned' in value && 'low' in value) {
    const number = BigInt(value.toString());
    return Number.isSafeInteger(Number(number)) ? Number(number) : String(number);
  }
  if (value instanceof Uint8Array) {
    return Buffer.from(value).toString('hex');
  }
  if (Array.isArray(value)) {
    return value.map(plain);
  }
  return value && typeof value === 'object' ? Object.fromEntries(Object.entries(value).map(([name, field]) => [name, plain(field)])) : value;
}

export function asText(value) {
  return JSON.stringify(plain(value));
}

export function decoded(octets) {
  return decodePayload(octets);
}

export function encoded(payload) {
  return encodePayload(payload);
}
