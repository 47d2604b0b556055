-- The energy meter of the demo plant: counters that grow, averages of the power, and data of the meter itself.

device{
    name = "Energy meter",
    instance = 4001,
    location = "Main distribution",
    model_name = "Three phase meter",
    serial_number = "EM-0042-17",
    objects = {
        accumulator{
            instance = 1, name = "Active energy", present_value = counter{start = 1250000, rate = 12},
            units = "watt-hours", scale = {integer_scale = 1}, prescale = {multiplier = 1, modulo_divide = 10},
            max_pres_value = 999999999, pulse_rate = 12, high_limit = 100, low_limit = 0,
            limit_monitoring_interval = 60,
        },
        accumulator{
            instance = 2, name = "Reactive energy", present_value = counter{start = 88000, rate = 2},
            units = "volt-amperes-reactive", scale = {float_scale = 0.1}, max_pres_value = 999999999,
        },
        pulse_converter{
            instance = 1, name = "Water", present_value = ramp{from = 0, to = 250, period = 600},
            units = "cubic-meters", scale_factor = 0.01, adjust_value = 0, count = counter{rate = 5},
            count_before_change = 1200, count_change_time = "2026-01-01 00:00:00",
            high_limit = 240, low_limit = 0, deadband = 1,
        },
        averaging{
            instance = 1, name = "Power, quarter hour", minimum_value = 31, maximum_value = 57,
            minimum_value_timestamp = "2026-03-15 02:40:00", maximum_value_timestamp = "2026-03-15 11:05:00",
            average_value = curve{mean = 42, amplitude = 9, period = 900}, variance_value = 30.5,
            window_interval = 900, window_samples = 90, attempted_samples = 90, valid_samples = 88,
        },
        large_analog_value{
            instance = 1, name = "Total since installation", present_value = counter{start = 123456789012, rate = 40},
            units = "watt-hours",
        },
        large_analog_value{
            instance = 2, name = "Grid frequency", present_value = curve{mean = 50, amplitude = 0.02, period = 240},
            units = "hertz", high_limit = 50.2, low_limit = 49.8, deadband = 0.01,
        },
        positive_integer_value{
            instance = 1, name = "Operating hours", present_value = counter{start = 20310, rate = 0.000278},
            units = "hours",
        },
        integer_value{
            instance = 1, name = "Power direction", present_value = steps{values = {-1, 0, 1}, period = 75},
        },
        octet_string_value{instance = 1, name = "Meter address", present_value = "0A14C0FFEE"},
        bit_string_value{instance = 1, name = "Phases present", present_value = "111"},
        date_value{instance = 1, name = "Calibrated until", present_value = "2031-12-31"},
        datetime_value{instance = 1, name = "Last reset", present_value = "2026-01-01 00:00:00"},
        time_value{instance = 1, name = "Meter clock", present_value = clock()},
    },
}
