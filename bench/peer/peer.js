// The other client: reads the same objects and properties as the driver, from the same responder.
//
// Synopsis: node peer.js PORT OBJECTS
//
// For each line of its input it reads all objects of 127.0.0.1:PORT once, one after the other, and prints the
// microseconds per object. Ends with its input, or with exit code 1 when a value is missing or wrong.
'use strict'

const readline = require('node:readline')
const { default: Client, ObjectType, PropertyIdentifier } = require('@bacnet-js/client')
const { default: Transport } = require('@bacnet-js/client/dist/lib/transport')

// The library reads port 0 as the default port. Here it requests any free port, as for a socket.
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

// Each round has a new client. The library checks for overdue requests while others are pending, and can then confuse
// an early request with a later one that has the same invoke id, which would wait for ever. With a time-out longer than
// a round it never checks.
async function open() {
  const transport = new FreePortTransport({ interface: '127.0.0.1', broadcastAddress: '127.0.0.1', reuseAddr: false })
  const client = new Client({ transport, apduTimeout: 30000 })
  await new Promise((resolve) => transport.once('listening', resolve))
  return client
}

// The microseconds per object, without the time for checking the values.
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
