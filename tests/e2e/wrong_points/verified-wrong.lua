-- One point for each way to be wrong that only the device shows. The comment at the end of a line is the verdict of
-- `verify`, or a remark in brackets.

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
    value("Removed object", "Float", "analog-input", 7),  -- no such object
    value("Removed property", "String", "integer-value", 2, "high-limit"),  -- not decoded by the driver
    value("No feedback", "Float", "binary-output", 1, "feedback-value"),  -- loses information
    value("No polarity", "UInt32", "binary-output", 2, "polarity"),  -- no such object
    value("Below zero", "Int32", "integer-value", 1),  -- loses information
    value("Half a degree", "Int32", "analog-input", 6),  -- loses information
    value("Energy as Float", "Float", "large-analog-value", 1),  -- loses information
    value("State as Boolean", "Boolean", "multi-state-value", 1),  -- loses information
    value("Pulses as Byte", "Byte", "positive-integer-value", 1),  -- no value
    value("Text as Boolean", "Boolean", "analog-input", 1, "description"),  -- no value
    value("Any day of May", "DateTime", "date-value", 1),  -- loses information
    value("With hundredths", "UInt32", "time-value", 1),  -- [hundredths as tenths]
    value("Boolean programme", "Float", "schedule", 1),  -- loses information
    value("Out of service", "Float", "analog-input", 2),  -- [not in service]
    value("In alarm", "Float", "analog-input", 3),  -- [in alarm]
    value("Faulty", "Float", "analog-input", 4),  -- [fault]
    value("By hand", "Float", "analog-input", 5),  -- [overridden]
})
block("Silent", Param.silent, {value("Plain", "Float", "analog-input", 1)})  -- device silent
block("Rejects", Param.rejects, {value("Plain", "Float", "analog-input", 1)})  -- device rejects
block("Aborts", Param.aborts, {value("Plain", "Float", "analog-input", 1)})  -- device aborts
block("Late", Param.late, {value("Plain", "Float", "analog-input", 1)})  -- late
block("Refuses", Param.refuses, {value("Plain", "Float", "analog-input", 1)})  -- device error
block("Garbled", Param.garbled, {value("Plain", "Float", "analog-input", 1)})  -- device silent
