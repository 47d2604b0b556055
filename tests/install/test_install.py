"""What `cmake --install` puts where, and what the installed programs are."""

import os
import re
import subprocess

from programs import BIN, LONGEST, ROOT, EndToEnd, Server

BUILD = os.path.dirname(BIN)
PROGRAMS = ["bacnet-simulator", "dorvel-workbench"]
LIBRARIES = ["dorvel.so", "dorvel_bacnet.so", "dorvelshare.so", "opcua.so"]


def output_of(*command, **options):
    return subprocess.run(command, stdout=subprocess.PIPE, text=True, timeout=LONGEST, check=True, **options).stdout


def files_below(folder):
    for path, _, names in os.walk(folder):
        yield from (os.path.join(path, name) for name in names)


class Installed(EndToEnd):
    """Each test has an installation in a folder of its own."""

    def setUp(self):
        super().setUp()
        self.prefix = self.file("prefix")
        output_of("cmake", "--install", BUILD, "--prefix", self.prefix, "--strip")
        self.programs = [os.path.join(self.prefix, "bin", name) for name in PROGRAMS]
        self.libraries = [os.path.join(self.prefix, "lib", "dorvel-bacnet", name) for name in LIBRARIES]


class Installation(Installed):
    def test_has_each_kind_of_file_in_its_folder(self):
        self.assertEqual(sorted(os.listdir(self.prefix)), ["bin", "lib", "share"])
        self.assertEqual(sorted(os.listdir(os.path.join(self.prefix, "bin"))), PROGRAMS)
        self.assertEqual(sorted(os.listdir(os.path.join(self.prefix, "lib", "dorvel-bacnet"))), LIBRARIES)
        for file in ("share/dorvel-bacnet/examples/plant.lua", "share/dorvel-bacnet/examples/devices/chiller.lua",
                     "share/doc/dorvel-bacnet-tools/README.md", "share/doc/dorvel-bacnet-tools/docs/workbench.md",
                     "share/doc/dorvel-bacnet-tools/copyright", "share/doc/dorvel-bacnet-driver/copyright"):
            self.assertTrue(os.path.getsize(os.path.join(self.prefix, file)), file)

    def test_says_version_and_commit(self):
        with open(os.path.join(ROOT, "CMakeLists.txt"), encoding="utf-8") as stream:
            version = re.search(r"^project\(.* VERSION ([0-9.]+)", stream.read(), re.MULTILINE).group(1)
        for name, program in zip(PROGRAMS, self.programs):
            self.assertRegex(output_of(program, "--version"),
                             rf"^{name} {version} \((commit [0-9a-f]{{12}}(\+changes)?|unknown commit)\)\n$")

    def test_runs_a_project_with_the_installed_add_in(self):
        simulator, workbench = self.programs
        examples = os.path.join(self.prefix, "share", "dorvel-bacnet", "examples")
        device = os.path.join(examples, "devices", "air-handling-unit.lua")
        with Server(simulator, device, "--port", "0", "--bind", "127.0.0.1", "--exit-with-stdin") as server:
            output = output_of(workbench, "run", os.path.join(examples, "first-steps.lua"), "--define", f"ahu={server.address}",
                               "--cycles", "2", "--summary", "--fail-on-fault", stdin=subprocess.DEVNULL)
        self.assertRegex(output, r"(?m)^cycles +2$")

    def test_finds_its_libraries_by_paths_relative_to_the_files(self):
        expected = {"dorvel_bacnet.so": [], **dict.fromkeys(PROGRAMS, ["$ORIGIN/../lib/dorvel-bacnet"]),
                    **dict.fromkeys(["dorvel.so", "dorvelshare.so"], ["$ORIGIN"])}
        for file in self.programs + self.libraries:
            entries = re.findall(r"\((RPATH|RUNPATH)\).*\[(.*)\]", output_of("readelf", "-d", file))
            name = os.path.basename(file)
            if name in expected:
                self.assertEqual([path for _, path in entries], expected[name], name)
            self.assertNotIn("RPATH", [kind for kind, _ in entries], name)

    def test_names_each_library_that_is_used_in_the_copyright(self):
        for files, package in ((self.programs + self.libraries, "tools"),
                               ([os.path.join(self.prefix, "lib/dorvel-bacnet/dorvel_bacnet.so")], "driver")):
            with open(os.path.join(self.prefix, f"share/doc/dorvel-bacnet-{package}/copyright"), encoding="utf-8") as stream:
                named = {name.split(".so")[0] for name in re.findall(r"\S+\.so\S*", stream.read())}
            used = set(re.findall(r"NEEDED.*\[(.*)\]", output_of("readelf", "-d", *files))) - set(LIBRARIES)
            self.assertIn("libc.so.6", used)
            self.assertEqual([name for name in sorted(used) if name.split(".so")[0] not in named], [],
                             package)

    def test_names_no_folder_of_the_build(self):
        for file in files_below(self.prefix):
            with open(file, "rb") as stream:
                self.assertNotIn(ROOT.encode(), stream.read(), file)

    def test_has_the_debug_symbols_of_each_file_apart(self):
        self.assertFalse(os.path.exists(os.path.join(self.prefix, "lib", "debug")), "only when they are asked for")
        for package in ("tools", "driver"):
            output_of("cmake", "--install", BUILD, "--prefix", self.prefix, "--component", package + "-symbols")
        for file in self.programs + self.libraries:
            self.assertNotIn(".debug_info", output_of("readelf", "-SW", file))
            first, rest = re.search(r"Build ID: (..)(\w+)", output_of("readelf", "-n", file)).groups()
            symbols = os.path.join(self.prefix, "lib", "debug", ".build-id", first, rest + ".debug")
            self.assertIn(".debug_info", output_of("readelf", "-SW", symbols, stderr=subprocess.DEVNULL))
            names = output_of("readelf", "--debug-dump=info", "--dwarf-depth=1", symbols, stderr=subprocess.DEVNULL)
            self.assertNotIn(ROOT, names, file)


class Commit(EndToEnd):
    def commit_of(self, folder):
        return output_of("cmake", f"-DSOURCE={folder}", "-P", os.path.join(ROOT, "cmake", "WriteCommit.cmake")).split()

    def test_is_unknown_without_a_clone_and_without_an_archive(self):
        os.mkdir(self.file("cmake"))
        self.file("cmake/Commit.txt", "$Format:%H %ct$\n")
        self.assertEqual(self.commit_of(self.folder), ["unknown"])

    def test_is_in_a_source_archive(self):
        if not os.path.exists(os.path.join(ROOT, ".git")):
            self.skipTest("an archive is made of a clone")
        output_of(os.path.join(ROOT, "scripts", "package"), "--source", "--output", self.folder)
        [archive] = [name for name in os.listdir(self.folder) if name.endswith(".tar.gz")]
        output_of("tar", "-xf", self.file(archive), "-C", self.folder)
        tree = self.file(archive.removesuffix(".tar.gz"))
        head = output_of("git", "-C", ROOT, "log", "-1", "--format=%H %ct").split()
        self.assertEqual(self.commit_of(tree), head)
        # One library is enough to see that the build takes it from there.
        output_of("cmake", "-S", tree, "-B", self.file("build"), "-G", "Ninja", "-DDORVEL_BUILD_TESTS=OFF")
        output_of("cmake", "--build", self.file("build"), "--target", "tools_version")
        with open(self.file("build/tools/Commit.cpp"), encoding="utf-8") as stream:
            self.assertIn(f'"{head[0][:12]}"', stream.read())


class Package(EndToEnd):
    def test_refuses_what_it_does_not_know(self):
        for arguments in (["--target", "mips"], ["--release", "0"], ["--now"], ["--from-build", "--check"]):
            process = subprocess.run([os.path.join(ROOT, "scripts", "package"), *arguments], stderr=subprocess.PIPE,
                                     text=True, timeout=LONGEST, check=False)
            self.assertEqual(process.returncode, 2, arguments)
            self.assertRegex(process.stderr, "--help")
