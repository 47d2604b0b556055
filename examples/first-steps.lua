-- The smallest project: one device, three variables. Try it with the simulated device first:
--
--   bacnet-simulator examples/devices/air-handling-unit.lua
--   dorvel-workbench run examples/first-steps.lua --define ahu=127.0.0.1:47808
--
-- and then with a real device:
--
--   dorvel-workbench run examples/first-steps.lua --define ahu=192.168.1.20:47808

-- Where the device is: its IPv4 address and UDP port, here as given with --define.
local address = Param.ahu or "192.168.1.20:47808"

BACnet.new{
    Name = "AHU",       -- your name for the block
    Address = address,  -- where datagrams go
    MAC = address,      -- the device's BACnet address; on the local network the same

    -- What is read, once a second. Every variable is one property of one object of the device; "dorvel-workbench names"
    -- lists the names of object types and properties.
    Vars = {
        -- A DataValue has a quality, which turns bad when the device stops answering. Use it in most cases.
        {Name = "Supply air temperature", Type = "DataValue", ElementType = "Float",
         ObjectType = "analog-input", ObjectNumber = 1, ObjectProperties = "present-value"},

        {Name = "Supply fan runs", Type = "DataValue", ElementType = "Boolean",
         ObjectType = "binary-output", ObjectNumber = 1, ObjectProperties = "present-value"},

        -- A plain value has no quality: it keeps its last value when the device stops answering.
        {Name = "What it is", Type = "String",
         ObjectType = "analog-input", ObjectNumber = 1, ObjectProperties = "description"},
    },
}
