// Plays a BACnet/IP device with the objects of objects.js.
//
// Synopsis: node device.js [--bind ADDRESS] [--port N]
//
// Binds that UDP port, or a free one, prints "ready ADDRESS:PORT" and answers until its standard input is closed. For each value
// that is written to it, it prints a line "wrote JSON".
'use strict'

const { default: Client, ASN1_ARRAY_ALL, ApplicationTag, ErrorClass, ErrorCode, ObjectType, PropertyIdentifier, Segmentation } = require('@bacnet-js/client')
const { default: Transport } = require('@bacnet-js/client/dist/lib/transport')
const { objects, device } = require('./objects')

const ANY_INSTANCE = 0x3fffff

// The library reads port 0 as the default port. Here it requests any free port, as for a socket.
class AnyPortTransport extends Transport {
  open() {
    this._server.bind(this._settings.port, this._settings.interface)
  }
}

// A write to the present value of a commandable object is a command at its priority, or takes that back.
function command(object, values, priority) {
  const commands = object[PropertyIdentifier.PRIORITY_ARRAY]
  commands[priority - 1] = values[0]
  const highest = commands.find(({ type }) => type !== ApplicationTag.NULL)
  object[PropertyIdentifier.PRESENT_VALUE] = highest ? [highest] : object[PropertyIdentifier.RELINQUISH_DEFAULT]
}

// Instance 4194303 of a Device object is this device, whatever its instance is.
function find({ type, instance }) {
  const isAnyDevice = type === ObjectType.DEVICE && instance === ANY_INSTANCE
  return objects.get(`${type},${isAnyDevice ? device.instance : instance}`)
}

// The values of a property, of one element of an array, or the number of its elements (index 0).
function valuesOf(object, { id, index }) {
  const values = object[id]
  if (!values || index === ASN1_ARRAY_ALL) {
    return values
  }
  return index === 0 ? [{ type: ApplicationTag.UNSIGNED_INTEGER, value: values.length }] : values.slice(index - 1, index)
}

function answerFor({ objectId, properties }) {
  const object = find(objectId)
  const asked = properties.flatMap((property) => property.id === PropertyIdentifier.ALL
    ? Object.keys(object).map((id) => ({ id: Number(id), index: ASN1_ARRAY_ALL }))
    : [property])
  const values = asked.map((property) => ({
    property,
    value: valuesOf(object, property) ?? [{ value: { type: 'BacnetError', errorClass: ErrorClass.PROPERTY, errorCode: ErrorCode.UNKNOWN_PROPERTY } }],
  }))
  return { objectId, values }
}

function main(argv) {
  const option = (name, byDefault) => argv.includes(name) ? argv[argv.indexOf(name) + 1] : byDefault
  const bind = option('--bind', '127.0.0.1')
  const transport = new AnyPortTransport({ interface: bind, broadcastAddress: bind, reuseAddr: false })
  transport._settings.port = Number(option('--port', '0'))
  const client = new Client({ transport })

  client.on('whoIs', ({ header, payload: { lowLimit = 0, highLimit = ANY_INSTANCE } }) => {
    if (lowLimit <= device.instance && device.instance <= highLimit) {
      client.iAmResponse(header.sender, device.instance, Segmentation.NO_SEGMENTATION, device.vendor)
    }
  })
  client.on('readPropertyMultiple', ({ header, invokeId, service, payload }) => {
    const unknown = payload.properties.find(({ objectId }) => !find(objectId))
    if (unknown) {
      client.errorResponse(header.sender, service, invokeId, ErrorClass.OBJECT, ErrorCode.UNKNOWN_OBJECT)
      return
    }
    client.readPropertyMultipleResponse(header.sender, invokeId, payload.properties.map(answerFor))
  })
  client.on('readProperty', ({ header, invokeId, service, payload: { objectId, property } }) => {
    const object = find(objectId)
    if (!object) {
      client.errorResponse(header.sender, service, invokeId, ErrorClass.OBJECT, ErrorCode.UNKNOWN_OBJECT)
    } else if (!valuesOf(object, property)) {
      client.errorResponse(header.sender, service, invokeId, ErrorClass.PROPERTY, ErrorCode.UNKNOWN_PROPERTY)
    } else {
      client.readPropertyResponse(header.sender, invokeId, objectId, property, valuesOf(object, property))
    }
  })
  // Every written value is accepted and printed as it was decoded; reading it back gives the same value.
  client.on('writeProperty', ({ header, invokeId, service, payload: { objectId, value } }) => {
    const object = find(objectId)
    if (!object) {
      client.errorResponse(header.sender, service, invokeId, ErrorClass.OBJECT, ErrorCode.UNKNOWN_OBJECT)
      return
    }
    if (object[PropertyIdentifier.PRIORITY_ARRAY] && value.property.id === PropertyIdentifier.PRESENT_VALUE) {
      command(object, value.value, value.priority)
    } else {
      object[value.property.id] = value.value
    }
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
