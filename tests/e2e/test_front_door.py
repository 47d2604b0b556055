"""Compares what README, CONTRIBUTING and the documents for developers promise with the tree and the programs."""

import itertools
import json
import os
import re
import shlex
import socket
import subprocess

from programs import BIN, LONGEST, ROOT, SIMULATOR, WORKBENCH, EndToEnd, simulator

# The documents whose paths and names of tests are compared with the tree.
DOCUMENTS = ("README.md", "CONTRIBUTING.md", "docs/extending.md", "docs/simulator.md", "docs/testing.md",
             "docs/reliability.md", "docs/performance.md", "docs/target.md")

# How a path of the tree begins.
TOP = {name for name in os.listdir(ROOT) if not name.startswith(".")} - {"build"} | {".ci"}


def document(name):
    with open(os.path.join(ROOT, name), encoding="utf-8") as stream:
        return stream.read()


def output_of(*command):
    return subprocess.run(command, stdout=subprocess.PIPE, text=True, timeout=LONGEST, check=True).stdout


def commands(name):
    """The commands in the indented lines of a document, without their comments."""
    lines = re.findall(r"^    ((?:scripts|build|cmake|ctest)\b.*)", document(name), re.MULTILINE)
    return [shlex.split(command, comments=True) for line in lines for command in line.split("&&")]


def paths(text):
    """The paths of the tree that a text names in code, with `Name.{h,cpp}` taken apart."""
    for quoted in re.findall(r"`([^`\s]+/[^`\s]*)`", text):
        if quoted.split("/")[0] in TOP:
            parts = [part.split(",") for part in re.split(r"[{}]", quoted)]
            yield from ("".join(choice) for choice in itertools.product(*parts))


def known_tests():
    """Suite and name of every test below tests/."""
    known = set()
    for folder, _, files in os.walk(os.path.join(ROOT, "tests")):
        for name in files:
            if not name.endswith((".cpp", ".py")):
                continue
            text = document(os.path.join(folder, name))
            known |= set(re.findall(r"^TEST(?:_F|_P)?\((\w+),\s+(\w+)\)", text, re.MULTILINE))
            for suite, body in re.findall(r"^class (\w+)\(.*?\n(.*?)(?=^class |\Z)", text, re.MULTILINE | re.DOTALL):
                known |= {(suite, test) for test in re.findall(r"^    def (test_\w+)", body, re.MULTILINE)}
    return known


def plain(name):
    return re.sub("[^a-z0-9]", "", name.lower())


def pairs_of_the_readme():
    """The object types of the conformance table, each with the properties that are read of it."""
    table, common = re.search(r"<!-- object types: begin -->(.*)<!-- object types: end -->\s+(.*)", document("README.md"),
                              re.DOTALL).groups()
    for row in re.findall(r"^\| ((?!Object types|---).*) \|$", table, re.MULTILINE):
        objects, read, _, further = (cell.strip() for cell in row.split("|"))
        properties = re.findall(r"`(\w+)`", further + common.split("\n")[0]) + ([] if read == "-" else ["Present_Value"])
        yield from ((name, properties) for name in objects.split(", "))


def type_of(name, property):
    """A type that takes what is read of a property of an object type."""
    if property in ("Description", "Weekly_Schedule", "Exception_Schedule"):
        return "String"
    if property != "Present_Value":
        return "Double"
    return {"Bit String Value": "String", "Octet String Value": "String", "Date Value": "DateTime",
            "DateTime Value": "DateTime"}.get(name, "Double")


def block(name, property):
    return (f'BACnet.new{{ Name = "{name} {property}", Address = Param.device, MAC = Param.device, CountRepeat = 1,\n'
            f'Vars = {{{{ Name = "V", Type = "DataValue", ElementType = "{type_of(name, property)}", ObjectType = "{name}",\n'
            f'ObjectNumber = 1, ObjectProperties = "{property}" }}}} }}\n')


def works_on(text, object_types):
    """The object types of a cell such as "any but Averaging" or "Binary Input, Output, Value"."""
    text = re.sub(r"\(.*\)", "", text).strip()
    if text.startswith("none"):
        return []
    if text.startswith("any"):
        return [name for name in object_types if name not in ("Lighting Output", text.removeprefix("any but "))]
    family = text.split(" ")[0]
    return [name if name in object_types else f"{family} {name}" for name in text.split(", ")]


class FrontDoor(EndToEnd):
    def unread(self, pairs):
        """The pairs of an object type and a property of which the driver reads nothing."""
        objects = "".join(f"{re.sub('[ -]', '_', name.lower())}{{instance = 1}}, " for name in {name for name, _ in pairs})
        states = {}
        with simulator(self.file("device.lua", f'device{{ name = "D", instance = 1, objects = {{ {objects} }} }}')) as device:
            # Each block has a socket, and a process need not be allowed more than 1024.
            for start in range(0, len(pairs), 300):
                project = self.file("project.lua", "".join(block(*pair) for pair in pairs[start:start + 300]))
                cycles = output_of(WORKBENCH, "run", "--cycles", "1", "--format", "json",
                                   "--define", f"device={device.address}", project)
                for cycle in map(json.loads, cycles.splitlines()):
                    states[cycle["block"]] = (cycle["fault"], cycle["variables"][0]["value"])
        self.assertEqual(set(states), {f"{name} {property}" for name, property in pairs})
        self.assertGreater(sum(value is not None for _, value in states.values()), 100)
        # The device need not have every property, which can end in a fault. A pair that the driver does not read has
        # neither a fault nor a value.
        return {name for name, state in states.items() if state == (False, None)}

    def test_the_properties_of_the_document_work_on_the_object_types_that_it_lists_and_no_others(self):
        text = document("docs/configure-a-block.md")
        object_types = [name for name in re.findall(r"\| \d+ \| \d+ \| ([^|`]+?) (?=\|)", text.split("### Properties")[0])]
        rows = re.findall(r"^\| \d+ \| \d+ \| [`(](\w+)[`)] \| ([^|]+) \|", text.split("### Properties")[1], re.MULTILINE)
        self.assertEqual((len(object_types), len(rows)), (23, 38))
        documented = {f"{name} {property}" for property, cell in rows for name in works_on(cell, object_types)}
        pairs = [(name, property) for name in object_types for property, _ in rows]
        unread = self.unread(pairs)
        self.assertEqual({f"{name} {property}" for name, property in pairs} - unread, documented)

    def test_the_object_types_of_the_readme_are_those_that_the_driver_reads(self):
        pairs = dict(pairs_of_the_readme())
        names = output_of(WORKBENCH, "names").split("\n\n")[0]
        known = {plain(name) for name in re.findall(r"^ +\d+ +\d+ +(\S+)", names, re.MULTILINE)}
        self.assertEqual({plain(name) for name in pairs}, known - {"lightingoutput"})

        every = [(name, property) for name, properties in pairs.items() for property in properties]
        self.assertEqual(self.unread(every), set())

    def test_the_first_steps_of_the_readme_show_what_it_says(self):
        steps = document("README.md").split("## First steps by hand")[1].split("\n## ")[0]
        device = re.search(r"^    \S+/bacnet-simulator (\S+)$", steps, re.MULTILINE).group(1)
        project, parameter = re.search(r"^    \S+/dorvel-workbench run (\S+) --define (\w+)=", steps, re.MULTILINE).groups()
        shown = [re.split("  +", row.strip()) for row in re.findall(r"^      (.*  \d+\.\d s)$", steps, re.MULTILINE)]
        with simulator(os.path.join(ROOT, device)) as running:
            cycle = output_of(WORKBENCH, "run", "--cycles", "1", "--format", "json", "--define",
                              f"{parameter}={running.address}", os.path.join(ROOT, project))
        variables = json.loads(cycle)["variables"]
        self.assertEqual([row[:3] + row[4:5] for row in shown],
                         [[v["name"], v["object"], v["property"], v["quality"]] for v in variables])
        self.assertEqual([row[3] for row in shown[1:]], ["true", variables[2]["value"]])

    def test_commands_can_be_entered_as_they_are_printed(self):
        presets = json.loads(document("CMakePresets.json"))
        for name in ("README.md", "CONTRIBUTING.md"):
            self.assertGreater(len(commands(name)), 3)
            for program, *arguments in commands(name):
                if program.startswith("scripts/"):
                    self.assertTrue(os.access(os.path.join(ROOT, program), os.X_OK), f"{name}: {program}")
                elif program.startswith("build/release/bin/"):
                    self.assertTrue(os.path.exists(os.path.join(BIN, os.path.basename(program))), f"{name}: {program}")
                    for path in (word for word in arguments if word.startswith("examples/")):
                        self.assertTrue(os.path.exists(os.path.join(ROOT, path)), f"{name}: {path}")
                elif "--preset" in arguments:
                    kind = "buildPresets" if "--build" in arguments else "configurePresets"
                    kind = "testPresets" if program == "ctest" else kind
                    preset = arguments[arguments.index("--preset") + 1]
                    self.assertIn(preset, [entry["name"] for entry in presets[kind]], name)

    def test_options_of_scripts_are_in_their_help(self):
        for name in ("README.md", "CONTRIBUTING.md", "docs/testing.md"):
            for script, options in re.findall(r"(scripts/[a-z-]+)((?: --[a-z-]+)+)", document(name)):
                usage = output_of(os.path.join(ROOT, script), "--help")
                for option in set(options.split()) - {"--help"}:
                    self.assertIn(option, usage, f"{name}: {script}")

    def test_every_command_of_the_workbench_and_its_options_are_in_the_manual(self):
        manual = document("docs/workbench.md")
        usage = output_of(WORKBENCH, "--help")
        names = re.findall(r"^  ([a-z]+) ", usage.split("Subcommands:")[1].split("\n\n")[0], re.MULTILINE)
        self.assertIn("run", names)
        for name in names:
            self.assertTrue(f"dorvel-workbench {name}" in manual, name)
            options = set(re.findall(r"(?<![\w-])--[a-z-]+", output_of(WORKBENCH, name, "--help"))) - {"--help"}
            self.assertEqual({option for option in options if f"`{option}" not in manual}, set(), name)

    def test_the_simulator_has_the_object_types_of_its_manual_and_those_of_the_driver(self):
        listed = re.search(r"^The object types are (.*)\.$", document("docs/simulator.md"), re.MULTILINE).group(1)
        names = re.findall(r"`(\w+)`", listed)
        objects = "".join(f"{name}{{instance = 1}}, " for name in names)
        with simulator(self.file("device.lua", f'device{{ name = "D", instance = 1, objects = {{ {objects} }} }}')):
            pass
        known = re.findall(r"^ +\d+ +\d+ +(\S+)", output_of(WORKBENCH, "names").split("\n\n")[0], re.MULTILINE)
        self.assertEqual({plain(name) for name in known} - {plain(name) for name in names}, set())

    def test_the_simulator_carries_out_the_services_of_its_manual_which_its_device_object_names(self):
        with simulator(self.file("device.lua", 'device{name = "D", instance = 100, objects = {}}')) as device, \
                socket.socket(socket.AF_INET, socket.SOCK_DGRAM) as client:
            client.connect(("127.0.0.1", device.port))
            client.settimeout(LONGEST)

            def answer(apdu):
                client.send(bytes.fromhex(f"810A{len(apdu) // 2 + 6:04X}0104{apdu}"))
                return client.recv(1500)[6:]

            # A request without parameters is a Reject in any case; reason 9 is unrecognized-service.
            carried_out = [service for service in range(26) if answer(f"000501{service:02X}") != bytes([0x60, 1, 9])]
            supported = answer("0005010C0C020000641961")  # Protocol_Services_Supported
        bits = "".join(f"{octet:08b}" for octet in supported[supported.index(b"\x85\x07") + 3:-1])
        self.assertEqual(carried_out, [service for service in range(26) if bits[service] == "1"])
        self.assertEqual(carried_out, [12, 14, 15])
        self.assertIn("answers ReadProperty, ReadPropertyMultiple, WriteProperty, Who-Is and Who-Has", document("docs/simulator.md"))

    def test_the_commands_in_the_manual_of_the_simulator_are_answered_as_it_says(self):
        dialogue = document("docs/simulator.md").split("lines typed and their answers:\n\n")[1].split("\n\n")[0]
        lines = [line.strip() for line in dialogue.split("\n")]
        device = os.path.join(ROOT, "examples", "devices", "air-handling-unit.lua")
        run = subprocess.run([SIMULATOR, device, "--port", "0", "--exit-with-stdin"], stdout=subprocess.PIPE,
                             stderr=subprocess.STDOUT, input="".join(line + "\n" for line in lines[::2]), text=True,
                             timeout=LONGEST, check=True)
        self.assertEqual(run.stdout.split("\n")[1:-1], lines[1::2])

    def test_paths_exist(self):
        for name in DOCUMENTS:
            missing = [path for path in paths(document(name)) if not os.path.exists(os.path.join(ROOT, path))]
            self.assertEqual(missing, [], name)
        self.assertGreater(len(list(paths(document("docs/extending.md")))), 30)

    def test_named_tests_exist(self):
        pattern = r"(?:`|gtest_filter=)([A-Z]\w+)\.([A-Z]\w{9,}|test_\w+)`"
        named = {test for name in DOCUMENTS for test in re.findall(pattern, document(name))}
        self.assertEqual(named - known_tests(), set())
        self.assertGreater(len(named), 15)
