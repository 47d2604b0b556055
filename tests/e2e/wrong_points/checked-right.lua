-- The correct twins of the points and blocks of checked-wrong.lua, by the same names: `check` finds nothing.

local function value(name, type, object, number, property)
    return {
        Name = name, Type = "DataValue", ElementType = type,
        ObjectType = object, ObjectNumber = number, ObjectProperties = property or "present-value",
    }
end

local function written(...)
    local variable = value(...)
    variable.Write = true
    return variable
end

local devices = 20

-- A block for a device of its own, in a task of its own.
local function block(name, fields, vars)
    devices = devices + 1
    local address = "192.168.1." .. devices .. ":47808"
    Task{Name = name, Period = 60000}
    fields.Name, fields.Task, fields.Vars = name, name, vars
    fields.Address, fields.MAC = fields.Address or address, fields.MAC or address
    BACnet.new(fields)
end

block("Fields", {}, {
    value("No such type", "Float", "analog-input", 1),
    value("No such property", "Float", "analog-input", 2),
    value("Number as text", "Float", "analog-input", 3),
    value("Number too large", "Float", "analog-input", 4194302),
    value("No type", "Float", "analog-input", 5),
    value("Misspelt", "Float", "analog-input", 6),
    value("Twice", "Float", "analog-input", 7),
    value("Twice, the other", "Float", "analog-input", 8),
})
block("Priority", {Priority = 16}, {written("Point", "Float", "analog-value", 11)})
block("Address", {}, {value("Point", "Float", "analog-input", 12)})
block("Items", {}, {value("Point", "Float", "analog-input", 13)})
block("No attempts", {CountRepeat = 1}, {value("Point", "Float", "analog-input", 14)})

block("Decoding", {}, {
    value("Resolution", "UInt32", "analog-input", 21, "units"),
    value("Lamp", "Float", "analog-output", 1),
    value("Average now", "Float", "averaging", 1, "average-value"),
    value("Is UTC", "DateTime", "datetime-value", 1),
    value("Blink warning", "Boolean", "analog-value", 22, "out-of-service"),
    value("Power now", "UInt32", "analog-value", 23, "status-flags"),
    value("Power", "UInt32", "analog-value", 24, "reliability"),
    value("First", "Float", "analog-value", 25),
    value("Second", "UInt32", "analog-value", 25, "units"),
    value("Feedback", "Boolean", "binary-input", 1),
    value("Below zero", "Float", "analog-value", 26),
})

block("Types", {}, {
    value("Text as Boolean", "String", "analog-input", 31, "description"),
    value("Analogue as time", "DateTime", "date-value", 32),
    value("Count as Byte", "UInt32", "accumulator", 31),
    value("Units as Boolean", "UInt32", "analog-input", 33, "units"),
    value("Analogue as Int32", "Double", "analog-input", 34),
    value("Count in 64 bits", "UInt32", "accumulator", 32),
    value("Without quality", "Float", "analog-input", 35),
})

block("Writes", {Priority = 8}, {
    written("Units", "Float", "analog-value", 41),
    written("Steps", "Float", "analog-value", 43),
    written("Command", "Float", "analog-value", 42),
})
block("Without priority", {}, {
    written("Loop setpoint", "Float", "loop", 1, "proportional-constant"),
    written("Programme", "String", "schedule", 1, "weekly-schedule"),
})

block("Router", {NetworkNumber = 5, MAC = "10:20"}, {value("Point", "Float", "analog-input", 51)})
block("Two addresses", {}, {value("Point", "Float", "analog-input", 52)})
block("Everybody", {NetworkNumber = 6, MAC = "10:20"}, {value("Point", "Float", "analog-input", 53)})
block("Own time-out", {}, {value("Point", "Float", "analog-input", 54)})
block("Numbered", {}, {value("Point", "Float", "analog-input", 55)})
block("Patient", {CountRepeat = 12}, {value("Point", "Float", "analog-input", 56)})
block("One of two", {}, {value("Point", "Float", "analog-input", 61)})
block("Two of two", {}, {value("Point", "Float", "analog-input", 62)})
block("Too fast", {}, {
    value("Point", "Float", "analog-input", 63),
    written("Setpoint", "Float", "analog-value", 63),
})
block("Again", {}, {value("Point", "Float", "analog-input", 56)})
block("Names", {}, {
    value("Supply air", "Float", "analog-input", 71),
    value("Return air", "Float", "analog-input", 72),
})

Set("Writes.Steps", 21)
