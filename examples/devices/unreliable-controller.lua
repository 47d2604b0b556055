-- A room controller on a bad line, to see how a client copes: late, lost, duplicated and truncated answers, errors,
-- segments out of order, and ten seconds of silence after a minute. Lines on standard input add a fault and end all:
--
--   fault "Unreliable controller" silence duration=30
--   clear "Unreliable controller"

device{
    name = "Unreliable controller",
    instance = 4001,
    max_apdu_length_accepted = 206,
    faults = {
        fault{"delay", seconds = 0.4, chance = 0.1},
        fault{"delay", seconds = 1.5, every = 40, seed = 2},
        fault{"loss", chance = 0.05, seed = 3},
        fault{"duplicate", chance = 0.05, seed = 4},
        fault{"truncate", octet = 20, every = 50},
        fault{"error", class = 2, code = 31, every = 60, object = {"analog_input", 1}},
        fault{"segments_out_of_order", every = 5, object = {"schedule", 1}},
        fault{"abort", code = 9, on = "write", every = 3},
        fault{"silence", after = 60, duration = 10},
    },
    objects = {
        analog_input{
            instance = 1, name = "Room temperature", present_value = curve{mean = 21, amplitude = 1.5, period = 120},
            units = "degrees-celsius",
        },
        analog_value{
            instance = 1, name = "Setpoint", present_value = 21.5, units = "degrees-celsius", relinquish_default = 20,
        },
        binary_input{instance = 1, name = "Window", present_value = toggle{period = 90}},
        schedule{
            instance = 1, name = "Programme", schedule_default = real(18),
            weekly_schedule = {
                monday = {{"06:30", real(21.5)}, {"12:00", real(20)}, {"13:00", real(21.5)}, {"18:00", null()}},
                tuesday = {{"06:30", real(21.5)}, {"12:00", real(20)}, {"13:00", real(21.5)}, {"18:00", null()}},
                wednesday = {{"06:30", real(21.5)}, {"12:00", real(20)}, {"13:00", real(21.5)}, {"18:00", null()}},
                thursday = {{"06:30", real(21.5)}, {"12:00", real(20)}, {"13:00", real(21.5)}, {"18:00", null()}},
                friday = {{"06:30", real(21.5)}, {"12:00", real(20)}, {"13:00", real(21.5)}, {"16:00", null()}},
            },
        },
    },
}
