-- The air handling unit of the demo plant: temperatures and pressures, two valves, two fans, a supply air loop
-- and the time programmes. The setpoint programme is so long that an answer with it takes several segments.
--
-- What can be written:
--   analog_value 1   the setpoint. It is commanded at priority 16 from the start: a write at 8 overrides it, a
--                    Null at 8 restores it. Above 35: value-out-of-range.
--   analog_output 1  the heating valve. Relinquished, it moves again by itself. Above 100: value-out-of-range.
--   schedule 1, 2    the weekly and the exception schedule.
-- A temperature such as analog_input 1 cannot be written: write-access-denied.

-- One setpoint for every hour: low at night, high by day.
local function hourly(day_setpoint, night_setpoint)
    local entries = {}
    for hour = 0, 23 do
        local is_day = hour >= 6 and hour < 20
        table.insert(entries, {string.format("%02d:00", hour), real(is_day and day_setpoint or night_setpoint)})
    end
    return entries
end

local workday, weekend = hourly(21.5, 17), hourly(19, 16.5)

device{
    name = "AHU-1",
    instance = 1001,
    location = "Roof",
    model_name = "Air handling unit",
    objects = {
        analog_input{
            instance = 1, name = "Supply air temperature", description = "Behind the heating coil",
            present_value = ramp{from = 18, to = 22, period = 60}, units = "degrees-celsius",
            high_limit = 35, low_limit = 5, deadband = 0.5, resolution = 0.1,
        },
        analog_input{
            instance = 2, name = "Return air temperature", description = "Extract duct",
            present_value = curve{mean = 22, amplitude = 1.5, peak = 15 * 3600}, units = "degrees-celsius",
        },
        analog_input{
            instance = 3, name = "Outside air temperature", description = "North side",
            present_value = curve{mean = 8, amplitude = 6, peak = 14 * 3600}, units = "degrees-celsius",
            low_limit = -25, high_limit = 45,
        },
        analog_input{
            instance = 4, name = "Supply duct pressure", present_value = ramp{from = 180, to = 220, period = 30},
            units = "pascals", high_limit = 400, low_limit = 50, deadband = 5,
        },
        analog_input{
            instance = 5, name = "Frost sensor", description = "Broken wire", present_value = -50,
            units = "degrees-celsius", reliability = "open-loop",
        },
        analog_output{
            instance = 1, name = "Heating valve", present_value = ramp{from = 0, to = 100, period = 120},
            units = "percent", min_pres_value = 0, max_pres_value = 100,
        },
        analog_output{instance = 2, name = "Cooling valve", present_value = 0, units = "percent"},
        analog_value{
            instance = 1, name = "Supply air setpoint", present_value = 20.5, units = "degrees-celsius",
            relinquish_default = 20, high_limit = 30, low_limit = 14, min_pres_value = 10, max_pres_value = 35,
        },
        binary_input{
            instance = 1, name = "Filter alarm", present_value = toggle{period = 90},
            inactive_text = "clean", active_text = "change filter",
        },
        binary_input{
            instance = 2, name = "Fire contact", description = "Opens on alarm", present_value = "inactive",
            polarity = "reverse",
        },
        binary_output{
            instance = 1, name = "Supply fan", present_value = "active", feedback_value = "active",
        },
        binary_output{
            instance = 2, name = "Extract fan", present_value = toggle{period = 40},
            feedback_value = toggle{period = 40},
        },
        loop{
            instance = 1, name = "Supply air loop", present_value = ramp{from = 0, to = 100, period = 120},
            setpoint = 20.5, controlled_variable_value = ramp{from = 18, to = 22, period = 60},
            proportional_constant = 4, integral_constant = 180, derivative_constant = 0, bias = 10,
            setpoint_reference = {"analog_value", 1, "present_value"}, action = "reverse",
        },
        averaging{
            instance = 1, name = "Supply air, last quarter hour", minimum_value = 18, maximum_value = 22,
            average_value = curve{mean = 20, amplitude = 0.4, period = 900}, variance_value = 1.3,
            object_property_reference = {"analog_input", 1, "present_value"}, attempted_samples = 15,
            valid_samples = 15,
        },
        schedule{
            instance = 1, name = "Setpoint programme", present_value = steps{values = {17, 21.5}, period = 120},
            schedule_default = real(18),
            weekly_schedule = {
                monday = workday, tuesday = workday, wednesday = workday, thursday = workday, friday = workday,
                saturday = weekend, sunday = weekend,
            },
            exception_schedule = {
                {date = "2026-12-25", priority = 10, entries = {{"00:00", real(16)}}},
                {from = "2026-07-13", to = "2026-08-21", priority = 12, entries = {{"06:00", real(24)}}},
            },
            list_of_object_property_references = {{"analog_value", 1, "present_value"}},
        },
        schedule{
            instance = 2, name = "Fan programme", description = "One entry of every datatype",
            weekly_schedule = {
                monday = {{"06:00", boolean(true)}, {"12:00", unsigned(2)}, {"18:00", signed(-3)}},
                tuesday = {{"06:00", double(1.25)}, {"12:00", octet_string("0A14")}},
                wednesday = {{"06:00", character_string("on")}, {"18:00", bit_string("101")}},
                thursday = {{"06:00", enumerated(1)}, {"18:00", date("2026-03-15")}},
                friday = {{"06:00", time("12:30")}, {"18:00", object_identifier("binary_output", 1)}},
                saturday = {{"08:00", real(40)}, {"20:00", null()}},
            },
            exception_schedule = {
                {week_n_day = {month = 12, week = 1, day = 2}, priority = 5,
                 entries = {{"12:00", null()}, {"13:00", enumerated(1)}}},
                {calendar = 7, priority = 9, entries = {{"08:00", unsigned(300)}, {"17:00", signed(-300)}}},
                {date = "*-01-01", entries = {{"00:00", enumerated(0)}}},
            },
        },
    },
}
