-- The room controllers of the demo plant: one device for twelve rooms. Its longest APDU has 206 octets, as on an
-- MS/TP line of an old plant, so reading many properties takes several segments.

local objects = {}

for room = 1, 12 do
    local title = string.format("Room %03d ", 100 + room)
    table.insert(objects, analog_input{
        instance = room, name = title .. "temperature", units = "degrees-celsius",
        present_value = curve{mean = 20 + room * 0.2, amplitude = 1.2, period = 600 + 30 * room},
        high_limit = 28, low_limit = 15, deadband = 0.5,
    })
    table.insert(objects, analog_value{
        instance = room, name = title .. "setpoint", units = "degrees-celsius", present_value = 21,
        relinquish_default = 21,
    })
    table.insert(objects, binary_input{
        instance = room, name = title .. "presence", present_value = toggle{period = 20 + 7 * room},
        inactive_text = "empty", active_text = "occupied",
    })
    table.insert(objects, binary_value{
        instance = room, name = title .. "window", present_value = room % 5 == 0 and "active" or "inactive",
        inactive_text = "closed", active_text = "open",
    })
    table.insert(objects, multi_state_value{
        instance = room, name = title .. "mode", present_value = 1 + room % 4, number_of_states = 4,
        state_text = {"comfort", "standby", "economy", "protection"},
    })
    table.insert(objects, lighting_output{
        instance = room, name = title .. "light", present_value = steps{values = {0, 40, 100}, period = 90},
        tracking_value = steps{values = {0, 40, 100}, period = 90}, power = 0.2,
        instantaneous_power = steps{values = {0, 0.08, 0.2}, period = 90}, blink_warn_enable = true,
        egress_time = 30, default_fade_time = 500,
    })
end

table.insert(objects, schedule{
    instance = 1, name = "Light programme", schedule_default = real(0), present_value = real(40),
    weekly_schedule = {
        monday = {{"07:00", real(80)}, {"18:30", real(0)}},
        tuesday = {{"07:00", real(80)}, {"18:30", real(0)}},
        wednesday = {{"07:00", real(80)}, {"18:30", real(0)}},
        thursday = {{"07:00", real(80)}, {"20:00", real(0)}},
        friday = {{"07:00", real(80)}, {"16:00", real(0)}},
    },
    exception_schedule = {
        {date = "*-12-24", priority = 3, entries = {{"00:00", real(0)}}},
    },
})

device{
    name = "Rooms",
    instance = 3001,
    location = "First floor",
    model_name = "Room controller",
    max_apdu_length_accepted = 206,
    objects = objects,
}
