// The objects of the independent device, with the values that a reader has to find.
//
// All values that the library can encode in an answer to ReadPropertyMultiple, over the object types that the
// driver can be configured for. The README in this folder lists what is missing, and why.
'use strict'

const { ApplicationTag, ObjectType, PropertyIdentifier, StatusFlagsBitString, GenericBitString } = require('@bacnet-js/client')

const P = PropertyIdentifier
const tagged = (type) => (value) => [{ type, value }]
const real = tagged(ApplicationTag.REAL)
const double = tagged(ApplicationTag.DOUBLE)
const unsigned = tagged(ApplicationTag.UNSIGNED_INTEGER)
const signed = tagged(ApplicationTag.SIGNED_INTEGER)
const enumerated = tagged(ApplicationTag.ENUMERATED)
const boolean = tagged(ApplicationTag.BOOLEAN)
const octets = tagged(ApplicationTag.OCTET_STRING)
const text = (value) => [{ type: ApplicationTag.CHARACTER_STRING, value, encoding: 0 }]
const bits = (count, ...set) => [{ type: ApplicationTag.BIT_STRING, value: new GenericBitString(count, set) }]
const date = (year, month, day) => [{ type: ApplicationTag.DATE, value: new Date(year, month - 1, day) }]
const time = (h, m, s, hundredths) => [{ type: ApplicationTag.TIME, value: new Date(2000, 0, 1, h, m, s, hundredths * 10) }]
const flags = (...set) => [{ type: ApplicationTag.BIT_STRING, value: new StatusFlagsBitString(...set) }]

const commands = (priority, value) => Array.from({ length: 16 }, (_, i) => i === priority - 1
  ? { type: ApplicationTag.REAL, value }
  : { type: ApplicationTag.NULL, value: null })

const IN_ALARM = 0
const FAULT = 1

// One row: the object's type and number, then its properties. By default no status flag is set.
const rows = [
  [ObjectType.ANALOG_INPUT, 1, { [P.PRESENT_VALUE]: real(21.5), [P.DESCRIPTION]: text('Supply air'), [P.UNITS]: enumerated(62), [P.OUT_OF_SERVICE]: boolean(false), [P.RELIABILITY]: enumerated(0), [P.EVENT_STATE]: enumerated(0) }],
  [ObjectType.ANALOG_INPUT, 2, { [P.PRESENT_VALUE]: real(-40.25), [P.STATUS_FLAGS]: flags(IN_ALARM, FAULT) }],
  [ObjectType.ANALOG_OUTPUT, 1, { [P.PRESENT_VALUE]: real(100), [P.PRIORITY_ARRAY]: commands(16, 100), [P.RELINQUISH_DEFAULT]: real(0) }],
  [ObjectType.ANALOG_VALUE, 4194302, { [P.PRESENT_VALUE]: real(3.4028234663852886e38) }],
  [ObjectType.BINARY_INPUT, 1, { [P.PRESENT_VALUE]: enumerated(1), [P.POLARITY]: enumerated(1) }],
  [ObjectType.BINARY_OUTPUT, 7, { [P.PRESENT_VALUE]: enumerated(0) }],
  [ObjectType.BINARY_VALUE, 300, { [P.PRESENT_VALUE]: enumerated(1) }],
  [ObjectType.LOOP, 1, { [P.PRESENT_VALUE]: real(47.75), [P.SETPOINT]: real(22), [P.PROPORTIONAL_CONSTANT]: real(2.5), [P.INTEGRAL_CONSTANT]: real(120), [P.DERIVATIVE_CONSTANT]: real(0) }],
  [ObjectType.MULTI_STATE_INPUT, 1, { [P.PRESENT_VALUE]: unsigned(3) }],
  [ObjectType.MULTI_STATE_OUTPUT, 1, { [P.PRESENT_VALUE]: unsigned(255) }],
  [ObjectType.MULTI_STATE_VALUE, 1, { [P.PRESENT_VALUE]: unsigned(256) }],
  [ObjectType.AVERAGING, 1, { [P.MINIMUM_VALUE]: real(18.5), [P.AVERAGE_VALUE]: real(20.25), [P.MAXIMUM_VALUE]: real(22), [P.WINDOW_INTERVAL]: unsigned(3600), [P.WINDOW_SAMPLES]: unsigned(60) }],
  [ObjectType.ACCUMULATOR, 1, { [P.PRESENT_VALUE]: unsigned(4000000000) }],
  [ObjectType.PULSE_CONVERTER, 1, { [P.PRESENT_VALUE]: real(12.5), [P.SCALE_FACTOR]: real(0.25), [P.ADJUST_VALUE]: real(-1) }],
  [ObjectType.BITSTRING_VALUE, 1, { [P.PRESENT_VALUE]: bits(12, 0, 2, 11) }],
  [ObjectType.INTEGER_VALUE, 1, { [P.PRESENT_VALUE]: signed(2147483647) }],
  [ObjectType.LARGE_ANALOG_VALUE, 1, { [P.PRESENT_VALUE]: double(1234567890.125) }],
  [ObjectType.OCTETSTRING_VALUE, 1, { [P.PRESENT_VALUE]: octets([0x00, 0x7f, 0x80, 0xff]) }],
  [ObjectType.POSITIVE_INTEGER_VALUE, 1, { [P.PRESENT_VALUE]: unsigned(65536) }],
  [ObjectType.DATE_VALUE, 1, { [P.PRESENT_VALUE]: date(2024, 3, 15) }],
  [ObjectType.TIME_VALUE, 1, { [P.PRESENT_VALUE]: time(13, 30, 15, 50) }],
  [ObjectType.DATETIME_VALUE, 1, { [P.PRESENT_VALUE]: [...date(2024, 3, 15), ...time(13, 30, 15, 50)] }],
]

const identifier = (type, instance) => ({ type: ApplicationTag.OBJECTIDENTIFIER, value: { type, instance } })
const nameOf = (type, instance) => `${ObjectType[type].toLowerCase().replaceAll('_', ' ')} ${instance}`

// The Device object. It sends no segments, so a client has to read its object list in parts if that does not fit.
const device = { instance: 9001, vendor: 999 }
const objectList = [[ObjectType.DEVICE, device.instance], ...rows].map(([type, instance]) => identifier(type, instance))
rows.unshift([ObjectType.DEVICE, device.instance, {
  [P.VENDOR_IDENTIFIER]: unsigned(device.vendor), [P.VENDOR_NAME]: text('Independent'), [P.MODEL_NAME]: text('device.js'),
  [P.FIRMWARE_REVISION]: text('3.3.2'), [P.APPLICATION_SOFTWARE_VERSION]: text('1'), [P.SYSTEM_STATUS]: enumerated(0),
  [P.PROTOCOL_VERSION]: unsigned(1), [P.PROTOCOL_REVISION]: unsigned(14), [P.MAX_APDU_LENGTH_ACCEPTED]: unsigned(1476),
  [P.SEGMENTATION_SUPPORTED]: enumerated(3), [P.OBJECT_LIST]: objectList,
}])

const objects = new Map()
for (const [type, instance, properties] of rows) {
  objects.set(`${type},${instance}`, {
    [P.OBJECT_IDENTIFIER]: [identifier(type, instance)],
    [P.OBJECT_NAME]: text(nameOf(type, instance)),
    [P.OBJECT_TYPE]: enumerated(type),
    ...(type === ObjectType.DEVICE ? {} : { [P.STATUS_FLAGS]: flags() }),
    ...properties,
  })
}

module.exports = { objects, device }
