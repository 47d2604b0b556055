-- The chiller of the demo plant, behind a router: it is station 0A14 of network 5. The simulator plays the router
-- too, so only requests to that station of that network reach the chiller.

device{
    name = "Chiller",
    instance = 2001,
    location = "Basement",
    model_name = "Screw chiller",
    router = {network = 5, mac = "0A14"},
    max_apdu_length_accepted = 480,
    objects = {
        analog_input{
            instance = 1, name = "Chilled water supply", present_value = ramp{from = 6, to = 8, period = 45},
            units = "degrees-celsius", high_limit = 12, low_limit = 3, deadband = 0.5,
        },
        analog_input{
            instance = 2, name = "Chilled water return", present_value = ramp{from = 11, to = 13, period = 45},
            units = "degrees-celsius",
        },
        analog_input{
            instance = 3, name = "Compressor current", present_value = curve{mean = 140, amplitude = 25, period = 300},
            units = "amperes",
        },
        analog_value{
            instance = 1, name = "Chilled water setpoint", present_value = 7, units = "degrees-celsius",
            relinquish_default = 7,
        },
        binary_value{
            instance = 1, name = "Release", present_value = "active", relinquish_default = "inactive",
            inactive_text = "blocked", active_text = "released",
        },
        multi_state_input{
            instance = 1, name = "State", present_value = steps{values = {1, 2, 3, 4}, period = 80},
            number_of_states = 4, state_text = {"off", "starting", "running", "stopping"},
        },
        multi_state_output{
            instance = 1, name = "Stage", present_value = 2, feedback_value = 2, number_of_states = 3,
            state_text = {"off", "stage 1", "stage 2"},
        },
        multi_state_value{
            instance = 1, name = "Mode", present_value = 1, number_of_states = 3,
            state_text = {"automatic", "manual", "maintenance"},
        },
        integer_value{
            instance = 1, name = "Valve offset", description = "Steps", present_value = ramp{from = 0, to = 20, period = 60},
            high_limit = 100, low_limit = -100, deadband = 2,
        },
        positive_integer_value{
            instance = 1, name = "Compressor starts", present_value = counter{start = 4711, rate = 0.02},
        },
        time_value{instance = 1, name = "Defrost at", present_value = "03:30"},
        date_value{instance = 1, name = "Next inspection", present_value = "2027-04-01"},
        datetime_value{instance = 1, name = "Controller clock", present_value = clock()},
        bit_string_value{
            instance = 1, name = "Alarm bits", present_value = "0010100000000001",
            event_state = "offnormal", description = "One bit for each alarm",
        },
    },
}
