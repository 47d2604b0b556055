// Plays a BACnet/IP device with the objects of objects.js.
//
// Synopsis: node device.js [--bind ADDRESS]
//
// Binds a free UDP port, prints "ready ADDRESS:PORT" and answers until its standard input is closed. For each value
// that is written to it, it prints a line "wrote JSON".
'use strict'

const { default: Client, ASN1_ARRAY_ALL, ErrorClass, ErrorCode } = require('@bacnet-js/client')
const { default: Transport } = require('@bacnet-js/client/dist/lib/transport')
const { objects } = require('./objects')

// The library reads port 0 as the default port. Here it requests any free port, as for a socket.
class FreePortTransport extends Transport {
  open() {
    this._server.bind(0, this._settings.interface)
  }
}

function answerFor({ objectId, properties }) {
  const object = objects.get(`${objectId.type},${objectId.instance}`)
  const values = properties.map(({ id }) => ({
    property: { id, index: ASN1_ARRAY_ALL },
    value: object[id] ?? [{ value: { type: 'BacnetError', errorClass: ErrorClass.PROPERTY, errorCode: ErrorCode.UNKNOWN_PROPERTY } }],
  }))
  return { objectId, values }
}

function main(argv) {
  const bind = argv[0] === '--bind' ? argv[1] : '127.0.0.1'
  const transport = new FreePortTransport({ interface: bind, broadcastAddress: bind, reuseAddr: false })
  const client = new Client({ transport })

  client.on('readPropertyMultiple', ({ header, invokeId, service, payload }) => {
    const unknown = payload.properties.find(({ objectId }) => !objects.has(`${objectId.type},${objectId.instance}`))
    if (unknown) {
      client.errorResponse(header.sender, service, invokeId, ErrorClass.OBJECT, ErrorCode.UNKNOWN_OBJECT)
      return
    }
    client.readPropertyMultipleResponse(header.sender, invokeId, payload.properties.map(answerFor))
  })
  client.on('readProperty', ({ header, invokeId, service, payload: { objectId, property } }) => {
    const object = objects.get(`${objectId.type},${objectId.instance}`)
    if (!object) {
      client.errorResponse(header.sender, service, invokeId, ErrorClass.OBJECT, ErrorCode.UNKNOWN_OBJECT)
    } else if (!object[property.id]) {
      client.errorResponse(header.sender, service, invokeId, ErrorClass.PROPERTY, ErrorCode.UNKNOWN_PROPERTY)
    } else {
      client.readPropertyResponse(header.sender, invokeId, objectId, property, object[property.id])
    }
  })
  // Every written value is accepted and printed as it was decoded; reading it back gives the same value.
  client.on('writeProperty', ({ header, invokeId, service, payload: { objectId, value } }) => {
    const object = objects.get(`${objectId.type},${objectId.instance}`)
    if (!object) {
      client.errorResponse(header.sender, service, invokeId, ErrorClass.OBJECT, ErrorCode.UNKNOWN_OBJECT)
      return
    }
    object[value.property.id] = value.value
    const written = { object: [objectId.type, objectId.instance], property: value.property.id, values: value.value, priority: value.priority }
    process.stdout.write(`wrote ${JSON.stringify(written)}\n`)
    client.simpleAckResponse(header.sender, service, invokeId)
  })
  client.on('error', (error) => {
    process.stderr.write(`${error.message}\n`)
    process.exit(1)
  })
  transport.on('listening', () => process.stdout.write(`ready ${bind}:${transport.ownAddress.port}\n`))
  process.stdin.on('end', () => process.exit(0)).resume()
}

main(process.argv.slice(2))
