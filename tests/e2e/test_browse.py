"""The command browse: devices, objects and one object, in each form; what a device withholds; no write."""

import time
import unittest

from exploring import AHU, READ_PROPERTY, READ_PROPERTY_MULTIPLE, Exploring, run


class Browse(Exploring):
    def test_lines_show_the_objects_with_their_values(self):
        device = self.device(AHU)
        result = run("browse", device.address)
        self.assertEqual((result.code, result.errors), (0, ""))
        by_name = {row["name"]: row for row in result.rows}
        self.assertEqual(len(by_name), 6)
        supply = by_name["Supply air"]
        self.assertEqual((supply["object"], supply["value"], supply["units"], supply["flags"], supply["description"]),
                         ("analog-input 1", "21.5", "°C", "none", "North side"))
        self.assertEqual((supply["read"], supply["write"], supply["why not"]),
                         ("yes", "no", "the device sets present-value of analog-input itself"))
        self.assertEqual(by_name["Mode"]["state"], "automatic")
        self.assertEqual([by_name["Valve"][column] for column in ("read", "write", "why not")], ["yes", "yes", ""])
        self.assertEqual(by_name["Mean"]["read"], "no")
        self.assertIn("present-value", by_name["Mean"]["why not"])

    def test_the_table_has_units_and_states_with_the_values(self):
        device = self.device(AHU)
        table = run("browse", device.address, "--format", "table").output
        for text in ("device 1001, AHU-1, Example, X1", "21.5 °C", "2 (automatic)", "read, write", "no: "):
            self.assertIn(text, table)

    def test_the_device_itself_is_shown_in_each_form(self):
        device = self.device(AHU)
        abilities = "max APDU 1476, segmented-transmit, protocol revision 14, database revision 1, operational"
        row = run("browse", device.address).rows[0]
        self.assertEqual((row["object"], row["name"], row["value"], row["read"]),
                         ("device 1001", "AHU-1", f"Example, X1, firmware 1, {abilities}", "no"))
        self.assertIn(f"\n  {abilities}\n", run("browse", device.address, "--format", "table").output)
        found = run("browse", device.address, "--format", "json").objects[0]
        self.assertEqual((found["vendor"], found["vendorId"], found["model"], found["firmware"], found["maxApdu"],
                          found["segmentation"], found["protocolRevision"], found["databaseRevision"], found["status"]),
                         ("Example", 999, "X1", "1", 1476, "segmented-transmit", 14, 1, "operational"))

    def test_references_are_shown_by_names(self):
        device = self.device("""device{ name = "D", instance = 1, objects = {
            schedule{instance = 1, name = "S", list_of_object_property_references =
                     {{"analog_value", 7, "present_value"}}} } }""")
        rows = {row["property"]: row["value"] for row in run("browse", device.address, "schedule,1").rows}
        self.assertEqual(rows["list-of-object-property-references"], "analog-value 7 present-value")
        self.assertIn("weekly-schedule, exception-schedule", rows["property-list"])

    def test_json_has_a_device_and_its_objects(self):
        device = self.device(AHU)
        first, *objects = run("browse", device.address, "--format", "json").objects
        self.assertEqual((first["kind"], first["device"], first["objects"], first["complete"]), ("device", 1001, 5, True))
        self.assertEqual([o["value"] for o in objects[:3]], [21.5, 40, 2])
        self.assertEqual([(o["canRead"], o["canWrite"]) for o in objects[:3]], [(True, False), (True, True), (True, True)])
        self.assertEqual((objects[0]["whyNot"], objects[0]["whyNotWritten"]),
                         (None, "the device sets present-value of analog-input itself"))
        self.assertEqual(objects[2]["stateTexts"], ["off", "automatic", "hand"])

    def test_one_object_shows_levels_and_schedules_in_words(self):
        device = self.device(AHU)
        for words in (("analog-output", "1"), ("analog-output,1",), ("analog-output 1",)):
            result = run("browse", device.address, *words, "--format", "table")
            self.assertEqual((result.code, result.errors), (0, ""))
            self.assertRegex(result.output, r" 8  Manual Operator +null\n")
            self.assertRegex(result.output, r"16 +40\n")
        self.assertIn("Monday     08:00 21.5, 17:30 null", run("browse", device.address, "schedule", "1").output)

    def test_an_object_that_is_not_there_is_one_line(self):
        device = self.device(AHU)
        result = run("browse", device.address, "analog-input", "99")
        self.assertEqual((result.code, result.rows), (1, []))
        self.assertEqual(result.errors, f"{device.address}: it has no analog-input 99\n")

    def test_an_address_that_is_given_twice_is_read_once(self):
        device = self.device(AHU)
        self.assertEqual(run("browse", device.address, device.address).output, run("browse", device.address).output)

    def test_nothing_is_written(self):
        device = self.logged_device(AHU)
        for words in (("browse", device.address), ("browse", device.address, "analog-output", "1"),
                      ("discover", device.address, "--timeout", "300")):
            run(*words)
        services = device.services()
        self.assertLess(5, len(services))
        self.assertLessEqual(set(services), {READ_PROPERTY, READ_PROPERTY_MULTIPLE})

    def test_500_objects_of_a_device_with_short_answers(self):
        objects = "\n".join(f'analog_input{{instance = {i}, name = "Temperature {i}", present_value = {i}}},'
                            for i in range(1, 501))
        device = self.device('device{name = "D", instance = 1, max_apdu_length_accepted = 206, '
                             f'segmentation_supported = "no-segmentation", objects = {{ {objects} }} }}')
        result = run("browse", device.address, "--rate", "1000")
        self.assertEqual((result.code, result.errors), (0, ""))
        self.assertEqual([row["name"] for row in result.rows], ["D"] + [f"Temperature {i}" for i in range(1, 501)])

    def test_names_can_have_any_octets(self):
        device = self.device('device{name = "D", instance = 1, objects = {'
                             f'analog_input{{instance = 1, name = "{"x" * 10000}"}},'
                             'analog_input{instance = 2, name = "a\\27[2J\\n\\tb"},'
                             'analog_input{instance = 3, name = "\\255\\254"} } }')
        for form in ("table", "lines", "json"):
            result = run("browse", device.address, "--format", form)
            self.assertEqual(result.code, 0)
            self.assertNotIn("\x1b", result.output)
        names = [o["name"] for o in run("browse", device.address, "--format", "json").objects[1:]]
        self.assertEqual(names[:2], ["x" * 10000, "a\x1b[2J\n\tb"])
        self.assertTrue(all(len(line) < 300
                            for line in run("browse", device.address, "--format", "table").output.splitlines()))

    def test_a_silent_device_costs_at_most_ten_seconds(self):
        device = self.device('device{name = "D", instance = 1, objects = {}, faults = {fault{"silence"}} }')
        begin = time.monotonic()
        result = run("browse", device.address)
        self.assertLess(time.monotonic() - begin, 10)
        self.assertEqual(result.code, 1)
        self.assertEqual(result.errors, f"{device.address}: it does not answer\n")
        once = ("--timeout", "100", "--retries", "0")
        self.assertEqual(run("browse", device.address, *once, "--format", "table").output,
                         f"{device.address}  \n  it does not answer\n")
        (found,) = run("browse", device.address, *once, "--format", "json").objects
        self.assertEqual((found["device"], found["complete"], found["notes"]), (None, False, ["it does not answer"]))

    def test_what_was_read_of_a_device_that_falls_silent_is_kept(self):
        objects = "".join(f'analog_input{{instance = {i}, name = "T{i}"}},' for i in range(1, 201))
        device = self.device(f'device{{name = "D", instance = 1, objects = {{ {objects} }}, '
                             'faults = {fault{"silence", after = 0.5}} }')
        result = run("browse", device.address, "--rate", "20", "--timeout", "200", "--retries", "0")
        self.assertEqual(result.code, 1)
        self.assertIn("not everything was read: it does not answer any more", result.errors)
        self.assertTrue(result.rows)

    def test_mistakes_on_the_command_line(self):
        for words in (("browse",), ("browse", "plant"), ("browse", "127.0.0.1", "analog-inptu", "1"),
                      ("browse", "127.0.0.1:0"), ("browse", "127.0.0.1", "127.0.0.2", "analog-input,1")):
            self.assertEqual(run(*words).code, 2, words)


if __name__ == "__main__":
    unittest.main()
