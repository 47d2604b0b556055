-- The devices of the wrong points and of their correct twins. The first one answers everything; of the others each has
-- one reason why its point has no good value.

local function point(kind, instance, name, fields)
    fields.instance, fields.name = instance, name
    return kind(fields)
end

device{
    name = "Bench", instance = 5001,
    objects = {
        point(analog_input, 1, "Plain", {present_value = 21.5, units = "degrees-celsius"}),
        point(analog_input, 2, "Out of service", {present_value = 4, out_of_service = true}),
        point(analog_input, 3, "In alarm", {present_value = 90, event_state = "high-limit"}),
        point(analog_input, 4, "Faulty", {present_value = 0, reliability = "open-loop"}),
        point(analog_input, 5, "By hand", {present_value = 50, status_flags = {overridden = true}}),
        point(analog_input, 6, "Half a degree", {present_value = 20.5}),
        point(analog_value, 1, "Setpoint", {present_value = 21, relinquish_default = 20}),
        point(binary_input, 1, "Contact", {present_value = "active"}),
        point(binary_output, 1, "Fan", {present_value = "active", feedback_value = "active"}),
        point(integer_value, 1, "Below zero", {present_value = -3}),
        point(integer_value, 2, "Above zero", {present_value = 3}),
        point(large_analog_value, 1, "Energy", {present_value = 123456.789}),
        point(multi_state_value, 1, "State", {present_value = 3, number_of_states = 3,
                                              state_text = {"off", "on", "fault"}}),
        point(positive_integer_value, 1, "Pulses", {present_value = 300}),
        point(positive_integer_value, 2, "Few pulses", {present_value = 3}),
        point(date_value, 1, "Any day of May", {present_value = "2026-05-*"}),
        point(date_value, 2, "The third of May", {present_value = "2026-05-03"}),
        point(time_value, 1, "With hundredths", {present_value = "08:30:00.25"}),
        point(time_value, 2, "Whole seconds", {present_value = "08:30:00"}),
        point(schedule, 1, "Of a Boolean", {present_value = boolean(true), schedule_default = boolean(true)}),
        point(schedule, 2, "Of a Real", {present_value = real(20), schedule_default = real(20)}),
    },
}

device{
    name = "Silent", instance = 5010, faults = {fault{"silence"}},
    objects = {point(analog_input, 1, "Plain", {present_value = 21.5})},
}

device{
    name = "Rejects", instance = 5011, faults = {fault{"reject"}},
    objects = {point(analog_input, 1, "Plain", {present_value = 21.5})},
}

device{
    name = "Aborts", instance = 5012, faults = {fault{"abort"}},
    objects = {point(analog_input, 1, "Plain", {present_value = 21.5})},
}

device{
    name = "Late", instance = 5013, faults = {fault{"delay", seconds = 1.4}},
    objects = {point(analog_input, 1, "Plain", {present_value = 21.5})},
}

device{
    name = "Refuses", instance = 5014, faults = {fault{"error", class = 2, code = 27}},
    objects = {point(analog_input, 1, "Plain", {present_value = 21.5})},
}

device{
    name = "Garbled", instance = 5015, faults = {fault{"garbage"}},
    objects = {point(analog_input, 1, "Plain", {present_value = 21.5})},
}
