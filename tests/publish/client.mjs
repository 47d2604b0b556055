// A client of a broker that tests drive: node client.mjs URL [OPTIONS], OPTIONS as JSON for the package mqtt, in which
// ca, cert and key are paths.
//
// A line of JSON on standard input is a command: {"subscribe": [TOPIC...]}, or {"publish": TOPIC, "text": TEXT |
// "sparkplug": PAYLOAD, "retain": BOOLEAN, "qos": N}. Standard output has a line of JSON for each event: {"event":
// "connected"}, "subscribed", "published", "closed", "error" with `reason`, or "message" with its topic, `retained`, and `text` or, below
// spBv1.0, `payload` as the package sparkplug-payload reads it. It ends with its standard input.
import {readFileSync} from 'node:fs';
import {createInterface} from 'node:readline';

import mqtt from 'mqtt';

import {asText, decoded, encoded} from './payloads.mjs';

const [url, words = '{}'] = process.argv.slice(2);
const options = JSON.parse(words);
for (const name of ['ca', 'cert', 'key']) {
  if (options[name]) {
    options[name] = readFileSync(options[name]);
  }
}
const client = mqtt.connect(url, {reconnectPeriod: 200, connectTimeout: 5000, protocolVersion: 4, ...options});

function print(event, fields = {}) {
  process.stdout.write(`${asText({event, ...fields})}\n`);
}

function done(event) {
  return (mistake) => (mistake ? print('error', {reason: mistake.message}) : print(event));
}

client.on('connect', () => print('connected'));
client.on('close', () => print('closed'));
client.on('error', (mistake) => print('error', {reason: mistake.message}));
client.on('message', (topic, octets, packet) => {
  const isSparkplug = topic.startsWith('spBv1.0/') && !topic.includes('/STATE/');
  const content = isSparkplug ? {payload: decoded(octets)} : {text: octets.toString()};
  print('message', {topic, retained: packet.retain, qos: packet.qos, ...content});
});

createInterface({input: process.stdin})
  .on('line', (line) => {
    const {subscribe, publish, text, sparkplug, retain = false, qos = 1} = JSON.parse(line);
    if (subscribe) {
      client.subscribe(subscribe, {qos: 1}, done('subscribed'));
    } else {
      client.publish(publish, sparkplug ? encoded(sparkplug) : text, {retain, qos}, done('published'));
    }
  })
  .on('close', () => client.end(true, () => process.exit(0)));
