-- One point or one block for each way to be wrong that shows in the project. The comment at the end of a line is what
-- `check` finds in that line.

local function value(name, type, object, number, property, more)
    local variable = {
        Name = name, Type = "DataValue", ElementType = type,
        ObjectType = object, ObjectNumber = number, ObjectProperties = property or "present-value",
    }
    for field, content in pairs(more or {}) do variable[field] = content end
    return variable
end

local function written(name, type, object, number, property)
    return value(name, type, object, number, property, {Write = true})
end

local device = "192.168.1.20:47808"

Task{Name = "slow", Period = 60000}
Task{Name = "fast", Period = 100}  -- short-period
Task{Name = "shared", Period = 60000}

-- Makes a task for a block whose device needs its own.
local function task(name)
    Task{Name = name, Period = 60000}
    return name
end

BACnet.new{
    Name = "Fields", Task = "slow", Address = device, MAC = device,
    Vars = {
        value("No such type", "Float", "analog-inptu", 1),  -- unknown-name
        value("No such property", "Float", "analog-input", 2, "presentvalues"),  -- unknown-name
        value("Number as text", "Float", "analog-input", "3"),  -- wrong-kind
        value("Number too large", "Float", "analog-input", 4194303),  -- out-of-range
        value("No type", nil, "analog-input", 5),  -- wrong-element-type
        value("Misspelt", "Float", "analog-input", 6, nil, {ObjectNummer = 6}),  -- unknown-field
        value("Twice", "Float", "analog-input", 7),
        value("Twice", "Float", "analog-input", 8),  -- name-taken
    },
}
BACnet.new{
    Name = "Priority", Task = "slow", Address = device, MAC = device, Priority = 17,  -- out-of-range
    Vars = {value("Point", "Float", "analog-input", 11)},
}
BACnet.new{
    Name = "Address", Task = task("Address"), Address = "192.168.1.20", MAC = device,  -- bad-address
    Vars = {value("Point", "Float", "analog-input", 12)},
}
BACnet.new{
    Name = "Items", Task = "slow", Address = device, MAC = device, FaultItemId = 7,  -- controller-field
    Vars = {value("Point", "Float", "analog-input", 13)},
}
BACnet.new{
    Name = "No attempts", Task = "slow", Address = device, MAC = device, CountRepeat = 0,  -- out-of-range
    Vars = {value("Point", "Float", "analog-input", 14)},
}

BACnet.new{
    Name = "Decoding", Task = "slow", Address = device, MAC = device,
    Vars = {
        value("Resolution", "Float", "analog-input", 21, "resolution"),  -- not-decoded
        value("Lamp", "Float", "lighting-output", 1),  -- lighting-output
        value("Average now", "Float", "averaging", 1),  -- averaging-present-value
        value("Is UTC", "UInt32", "datetime-value", 1, "is-utc"),  -- sent-as-other-property
        value("Blink warning", "UInt32", "analog-value", 22, "blink-warn-enable"),  -- sent-as-other-property
        value("Power now", "Float", "analog-value", 23, "instantaneous-power"),  -- sent-as-other-property
        value("Power", "Float", "analog-value", 24, "power"),  -- sent-as-other-property
        value("First", "Float", "analog-value", 25),
        value("Second", "Float", "analog-value", 25),  -- duplicate-property
        value("Feedback", "Float", "binary-output", 1, "feedback-value"),  -- misread-feedback
        value("Below zero", "Int32", "integer-value", 1),  -- sign-not-read
    },
}

BACnet.new{
    Name = "Types", Task = "slow", Address = device, MAC = device,
    Vars = {
        value("Text as Boolean", "Boolean", "analog-input", 31, "description"),  -- may-not-convert
        value("Analogue as time", "DateTime", "analog-input", 32),  -- never-converts
        value("Count as Byte", "Byte", "accumulator", 31),  -- may-not-convert
        value("Units as Boolean", "Boolean", "analog-input", 33, "units"),  -- loses-information
        value("Analogue as Int32", "Int32", "analog-input", 34),  -- loses-information
        value("Count in 64 bits", "UInt64", "accumulator", 32),  -- count-cut
        {Name = "Without quality", Type = "Float", ObjectType = "analog-input", ObjectNumber = 35, ObjectProperties = "present-value"},  -- no-quality
    },
}

BACnet.new{
    Name = "Writes", Task = "slow", Address = device, MAC = device, Priority = 8,
    Vars = {
        written("Units", "UInt32", "analog-value", 41, "units"),  -- write-refused
        written("Loop setpoint", "Float", "loop", 1, "setpoint"),  -- write-other-property
        written("Steps", "Int32", "integer-value", 41),  -- sign-not-read write-sign
        written("Command", "String", "analog-value", 42),  -- write-text
        written("Programme", "String", "schedule", 1, "weekly-schedule"),  -- priority-on-schedule
    },
}

BACnet.new{
    Name = "Router", Task = task("Router"), Address = device, NetworkNumber = 5,  -- mac-missing
    Vars = {value("Point", "Float", "analog-input", 51)},
}
BACnet.new{
    Name = "Two addresses", Task = task("Two addresses"), Address = device, MAC = "192.168.1.21:47808",  -- mac-differs
    Vars = {value("Point", "Float", "analog-input", 52)},
}
BACnet.new{
    Name = "Everybody", Task = task("Everybody"), Address = device, NetworkNumber = 6, MAC = "",  -- broadcast-address
    Vars = {value("Point", "Float", "analog-input", 53)},
}
BACnet.new{
    Name = "Own time-out", Task = "slow", Address = device, MAC = device, Timeout = 3000,  -- field-without-effect
    Vars = {value("Point", "Float", "analog-input", 54)},
}
BACnet.new{
    Name = "Numbered", Task = "slow", Address = device, MAC = device, AddressNumber = 7,  -- field-without-effect
    Vars = {value("Point", "Float", "analog-input", 55)},
}
BACnet.new{
    Name = "Patient", Task = "slow", Address = device, MAC = device, CountRepeat = 120,  -- long-silence
    Vars = {value("Point", "Float", "analog-input", 56)},
}

BACnet.new{
    Name = "One of two", Task = "shared", Address = device, MAC = device,
    Vars = {value("Point", "Float", "analog-input", 61)},
}
BACnet.new{
    Name = "Two of two", Task = "shared", Address = "192.168.1.22:47808", MAC = "192.168.1.22:47808",  -- shared-task
    Vars = {value("Point", "Float", "analog-input", 62)},
}
BACnet.new{
    Name = "Too fast", Task = "fast", Address = device, MAC = device, WriteCondition = "Always",
    Vars = {
        value("Point", "Float", "analog-input", 63),
        written("Setpoint", "Float", "analog-value", 63),
    },
}
BACnet.new{
    Name = "Again", Task = "slow", Address = device, MAC = device,
    Vars = {value("Point", "Float", "analog-input", 56)},  -- object-polled-twice
}
BACnet.new{
    Name = "Names", Task = "slow", Address = device, MAC = device,
    Vars = {
        value("Supply air", "Float", "analog-input", 71),
        value("supply air ", "Float", "analog-input", 72),  -- similar-names
    },
}

Set("Writes.Steps", "many")  -- bad-set
