"""The symbols that the add-in exports and the libraries that it needs."""

import subprocess

from programs import ADD_IN, EndToEnd


def lines(*command):
    return subprocess.run(command, stdout=subprocess.PIPE, text=True, check=True).stdout.splitlines()


class AddIn(EndToEnd):
    def test_exports_only_its_entry(self):
        symbols = [line.split()[-1] for line in lines("nm", "-D", "--defined-only", ADD_IN)]
        self.assertEqual(symbols, ["InitAddin"])

    def test_links_the_host_lua_and_the_runtimes(self):
        needed = {line.split("[")[1].rstrip("]") for line in lines("readelf", "-d", ADD_IN) if "(NEEDED)" in line}
        # Some machines' thread-local variables need the dynamic loader itself.
        others = {name for name in needed if not name.startswith("ld-linux")}
        self.assertEqual(others, {"dorvel.so", "dorvelshare.so", "opcua.so", "liblua5.4.so.0",
                                  "libstdc++.so.6", "libgcc_s.so.1", "libc.so.6"})
