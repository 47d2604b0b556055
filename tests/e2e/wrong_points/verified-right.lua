-- The correct twins of the points of verified-wrong.lua, by the same names: `verify` has nothing to say about them.

local function value(name, type, object, number, property)
    return {
        Name = name, Type = "DataValue", ElementType = type,
        ObjectType = object, ObjectNumber = number, ObjectProperties = property or "present-value",
    }
end

local function block(name, address, vars)
    Task{Name = name, Period = 100}
    BACnet.new{Name = name, Task = name, Address = address, MAC = address, CountRepeat = 1, Vars = vars}
end

block("Bench", Param.bench, {
    value("Removed object", "Float", "analog-input", 1),
    value("Removed property", "String", "integer-value", 2, "description"),
    value("No feedback", "Boolean", "binary-output", 1),
    value("No polarity", "UInt32", "binary-output", 1, "polarity"),
    value("Below zero", "Int32", "integer-value", 2),
    value("Half a degree", "Float", "analog-input", 6),
    value("Energy as Float", "Double", "large-analog-value", 1),
    value("State as Boolean", "UInt32", "multi-state-value", 1),
    value("Pulses as Byte", "Byte", "positive-integer-value", 2),
    value("Text as Boolean", "String", "analog-input", 1, "description"),
    value("Any day of May", "DateTime", "date-value", 2),
    value("With hundredths", "UInt32", "time-value", 2),
    value("Boolean programme", "Float", "schedule", 2),
    value("Out of service", "Boolean", "analog-input", 1, "out-of-service"),
    value("In alarm", "UInt32", "analog-input", 1, "event-state"),
    value("Faulty", "UInt32", "analog-input", 1, "reliability"),
    value("By hand", "UInt32", "analog-input", 1, "status-flags"),
})

-- The devices of these blocks have lost their faults.
block("Silent", Param.silent, {value("Plain", "Float", "analog-input", 1)})
block("Rejects", Param.rejects, {value("Plain", "Float", "analog-input", 1)})
block("Aborts", Param.aborts, {value("Plain", "Float", "analog-input", 1)})
block("Late", Param.late, {value("Plain", "Float", "analog-input", 1)})
block("Refuses", Param.refuses, {value("Plain", "Float", "analog-input", 1)})
block("Garbled", Param.garbled, {value("Plain", "Float", "analog-input", 1)})
