-- A plant of four devices: an air handling unit, a chiller behind a router, room controllers and an energy meter.
-- examples/devices/ has a simulated device for each; scripts/demo runs them all. With real devices:
--
--   dorvel-workbench run examples/plant.lua --define ahu=192.168.1.20:47808 --define chiller=192.168.1.1:47808 ...
--
-- Some variables can be set while it runs: press s in the table, or
--
--   echo "set AHU.Supply air setpoint = 22" | dorvel-workbench run examples/plant.lua ...
--   echo "set Chiller.Mode = manual" | dorvel-workbench run examples/plant.lua ...
--   echo "set AHU.Setpoint programme = Mon-Fri 06:00 21.5 °C, 20:00 17 °C" | dorvel-workbench run examples/plant.lua ...
--
-- Every object type that the driver can read occurs at least once. It can read no property of Lighting Output.

local ahu = Param.ahu or "192.168.1.20:47808"
local router = Param.chiller or "192.168.1.1:47808"
local rooms = Param.rooms or "192.168.1.22:47808"
local meter = Param.meter or "192.168.1.23:47808"

Task{Name = "air", Period = 1000}
Task{Name = "energy", Period = 1000}

-- A variable with its quality; property is present-value by default.
local function value(name, type, object, number, property)
    return {
        Name = name, Type = "DataValue", ElementType = type,
        ObjectType = object, ObjectNumber = number, ObjectProperties = property or "present-value",
    }
end

-- A variable that can be set too: the driver writes its present value, or its schedule.
local function setting(...)
    local variable = value(...)
    variable.Write = true
    return variable
end

-- For people: the unit that is shown after a number, and the texts of states. The driver never sees them.
local function unit(text, variable)
    variable.Unit = text
    return variable
end
local function states(texts, variable)
    variable.StateTexts = texts
    return variable
end
local function celsius(variable)
    return unit("degrees-celsius", variable)
end

-- Priority 8 overrides a time programme (16); commands at priorities 1 to 7 override it. Writes of schedules have the
-- priority too: for a device that rejects this, put the schedules in a separate block without Priority.
BACnet.new{
    Name = "AHU", Task = "air", Address = ahu, MAC = ahu, Priority = 8,
    Vars = {
        celsius(value("Supply air temperature", "Float", "analog-input", 1)),
        value("Supply air description", "String", "analog-input", 1, "description"),
        value("Supply air units", "UInt32", "analog-input", 1, "units"),
        value("Supply air flags", "UInt64", "analog-input", 1, "status-flags"),
        celsius(value("Return air temperature", "Float", "analog-input", 2)),
        celsius(value("Outside air temperature", "Float", "analog-input", 3)),
        unit("pascals", value("Duct pressure", "Float", "analog-input", 4)),
        value("Frost sensor reliability", "UInt32", "analog-input", 5, "reliability"),
        unit("percent", setting("Heating valve", "Float", "analog-output", 1)),
        unit("percent", value("Cooling valve", "Float", "analog-output", 2)),
        celsius(setting("Supply air setpoint", "Float", "analog-value", 1)),
        states({"clean", "change filter"}, value("Filter alarm", "Boolean", "binary-input", 1)),
        value("Fire contact", "Boolean", "binary-input", 2),
        value("Fire contact polarity", "UInt32", "binary-input", 2, "polarity"),
        setting("Supply fan", "Boolean", "binary-output", 1),
        value("Extract fan", "Boolean", "binary-output", 2),
        unit("percent", value("Loop output", "Float", "loop", 1)),
        celsius(value("Loop setpoint", "Float", "loop", 1, "setpoint")),
        value("Loop gain", "Float", "loop", 1, "proportional-constant"),
        value("Loop integral", "Float", "loop", 1, "integral-constant"),
        celsius(value("Supply air, lowest", "Float", "averaging", 1, "minimum-value")),
        celsius(value("Supply air, average", "Double", "averaging", 1, "average-value")),
        celsius(value("Supply air, highest", "Float", "averaging", 1, "maximum-value")),
        celsius(value("Setpoint by programme", "Float", "schedule", 1)),
        setting("Setpoint programme", "String", "schedule", 1, "weekly-schedule"),
        setting("Setpoint exceptions", "String", "schedule", 1, "exception-schedule"),
    },
}

-- The chiller is on network 5, behind a router. Address is the router's, MAC the station on that network: two octets
-- in decimal, 0A 14.
BACnet.new{
    Name = "Chiller", Task = "energy", Address = router, NetworkNumber = 5, MAC = "10:20",
    Vars = {
        celsius(value("Supply temperature", "Float", "analog-input", 1)),
        celsius(value("Return temperature", "Float", "analog-input", 2)),
        unit("amperes", value("Compressor current", "Float", "analog-input", 3)),
        celsius(setting("Setpoint", "Float", "analog-value", 1)),
        states({"blocked", "released"}, value("Release", "Boolean", "binary-value", 1)),
        states({"off", "starting", "running", "stopping"}, value("State", "UInt32", "multi-state-input", 1)),
        states({"off", "stage 1", "stage 2"}, value("Stage", "UInt32", "multi-state-output", 1)),
        states({"automatic", "manual", "maintenance"}, setting("Mode", "UInt32", "multi-state-value", 1)),
        value("Valve offset", "Int32", "integer-value", 1),
        value("Compressor starts", "UInt32", "positive-integer-value", 1),
        unit("milliseconds", value("Defrost at", "UInt32", "time-value", 1)),  -- milliseconds since midnight
        value("Next inspection", "DateTime", "date-value", 1),
        value("Controller clock", "DateTime", "datetime-value", 1),
        value("Alarm bits", "String", "bitstring-value", 1),
        value("Alarm state", "UInt32", "bitstring-value", 1, "event-state"),
    },
}

-- Twelve rooms on one device. A project is a program, so a loop makes their variables.
local room_variables = {
    unit("percent", value("Light programme", "Float", "schedule", 1)),
    value("Light programme, week", "String", "schedule", 1, "weekly-schedule"),
}
local presence = {"empty", "occupied"}
local modes = {"comfort", "standby", "economy", "protection"}
for room = 1, 12 do
    local name = string.format("Room %d ", 100 + room)
    table.insert(room_variables, celsius(value(name .. "temperature", "Float", "analog-input", room)))
    table.insert(room_variables, celsius(setting(name .. "setpoint", "Float", "analog-value", room)))
    table.insert(room_variables, states(presence, value(name .. "presence", "Boolean", "binary-input", room)))
    table.insert(room_variables, states(modes, value(name .. "mode", "UInt32", "multi-state-value", room)))
end
BACnet.new{Name = "Rooms", Task = "air", Address = rooms, MAC = rooms, Vars = room_variables}

BACnet.new{
    Name = "Meter", Task = "energy", Address = meter, MAC = meter,
    Vars = {
        value("Active energy", "UInt32", "accumulator", 1),
        value("Reactive energy", "UInt32", "accumulator", 2),
        unit("cubic-meters", value("Water", "Float", "pulse-converter", 1)),
        value("Water per pulse", "Float", "pulse-converter", 1, "scale-factor"),
        unit("kilowatts", value("Power, lowest", "Float", "averaging", 1, "minimum-value")),
        unit("kilowatts", value("Power, average", "Float", "averaging", 1, "average-value")),
        unit("kilowatts", value("Power, highest", "Float", "averaging", 1, "maximum-value")),
        unit("seconds", value("Averaging window", "UInt32", "averaging", 1, "window-interval")),
        unit("watt-hours", value("Total energy", "Double", "large-analog-value", 1)),
        unit("hertz", value("Grid frequency", "Double", "large-analog-value", 2)),
        unit("hours", value("Operating hours", "UInt32", "positive-integer-value", 1)),
        value("Meter address", "String", "octetstring-value", 1),
        value("Phases present", "String", "bitstring-value", 1),
        value("Calibrated until", "DateTime", "date-value", 1),
        value("Last reset", "DateTime", "datetime-value", 1),
        value("Meter clock", "UInt32", "time-value", 1),
    },
}
