// The other client: reads the same objects and properties from the same responder as the driver does.
//
// Synopsis: node peer.js PORT OBJECTS
//
// Reads all objects of 127.0.0.1:PORT once per line of its input, one after the other, and prints the
// microseconds per object. Ends with its input, and with exit code 1 when a value is missing or wrong.
'use strict'

const readline = require('node:readline')
const { default: Client, ObjectType, PropertyIdentifier } = require('@bacnet-js/client')
const { default: Transport } = require('@bacnet-js/client/dist/lib/transport')

// The library takes port 0 for "the usual port"; here it means "one that is free", as it does for a socket.
class FreePortTransport extends Transport {
  open() {
    this._server.bind(0, this._settings.interface)
  }
}

const PROPERTIES = [PropertyIdentifier.PRESENT_VALUE, PropertyIdentifier.OUT_OF_SERVICE, PropertyIdentifier.STATUS_FLAGS]

// The responder's Present_Value: a Real that ends with the two octets of the object's number.
function presentValue(number) {
  const octets = Buffer.alloc(4)
  octets.writeUInt32BE(0x42280000 + number)
  return octets.readFloatBE()
}

function check(number, { values: [{ objectId, values }] }) {
  const [present, outOfService, flags] = values.map(({ value: [{ value }] }) => value)
  const isRight = objectId.instance === number && values.every(({ id }, index) => id === PROPERTIES[index]) &&
    present === presentValue(number) && outOfService === false && flags.bitsUsed === 4 && flags.value[0] === 0
  if (!isRight) throw new Error(`wrong values for object ${number}`)
}

// A client of its own for each round. The library looks for overdue requests while others are under way, and can then
// take an early request for a later one that has the same invoke id, which would wait for ever. With a time-out longer
// than a round it never looks.
async function open() {
  const transport = new FreePortTransport({ interface: '127.0.0.1', broadcastAddress: '127.0.0.1', reuseAddr: false })
  const client = new Client({ transport, apduTimeout: 30000 })
  await new Promise((resolve) => transport.once('listening', resolve))
  return client
}

// The microseconds per object; looking at the values does not count.
async function round(client, address, objects) {
  const answers = []
  const properties = PROPERTIES.map((id) => ({ id }))
  const begin = process.hrtime.bigint()
  for (let number = 1; number <= objects; ++number) {
    const objectId = { type: ObjectType.ANALOG_VALUE, instance: number }
    answers.push(await client.readPropertyMultiple({ address }, [{ objectId, properties }]))
  }
  const elapsed = Number(process.hrtime.bigint() - begin)
  answers.forEach((answer, index) => check(index + 1, answer))
  return elapsed / 1000 / objects
}

async function main([port, objects]) {
  for await (const line of readline.createInterface({ input: process.stdin })) {
    const client = await open()
    process.stdout.write(`${await round(client, `127.0.0.1:${port}`, Number(objects))}\n`)
    client.close()
  }
}

main(process.argv.slice(2)).then(() => process.exit(0), (error) => {
  process.stderr.write(`peer.js: ${error.message}\n`)
  process.exit(1)
})
