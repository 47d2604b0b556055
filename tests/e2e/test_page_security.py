"""Attempts on the page of a run: each must fail, and the run must go on."""

import json
import os
import re
import subprocess
import tempfile
import time

from paging import PageRun, PageTestCase, is_closed, received, status
from programs import PLANT_PROJECT, WORKBENCH

SETPOINT = "Supply air setpoint"


class PageSecurity(PageTestCase):
    def tearDown(self):
        # Whatever was tried, the page answers and the run ends well.
        self.assertEqual(self.page.request("/api/plant").status, 200)
        code, _ = self.page.stop()
        self.assertEqual(code, 0)

    def write(self, headers=None):
        return self.page.post(f"/api/variables/{self.id_of(SETPOINT)}/write", {"value": "22.5"}, headers)

    def assert_refused(self, response, code, text):
        self.assertEqual(response.status, code, response.text)
        self.assertIn(text, json.loads(response.text)["error"])

    def test_a_write_of_this_page_is_taken(self):
        response = self.write()
        self.assertEqual(response.status, 202, response.text)
        self.assertEqual(json.loads(response.text)["state"], "pending")

    def test_a_write_of_another_origin_is_refused(self):
        self.assert_refused(self.write({"Origin": "http://evil.example"}), 403, "evil.example")

    def test_a_write_of_an_origin_without_name_is_refused(self):
        self.assert_refused(self.write({"Origin": "null"}), 403, "null")

    def test_a_write_of_another_page_of_this_machine_is_refused(self):
        self.assert_refused(self.write({"Origin": f"http://127.0.0.1:{self.page.port + 1}"}), 403, "requests from")

    def test_a_write_that_a_browser_makes_for_another_site_is_refused(self):
        self.assert_refused(self.write({"Sec-Fetch-Site": "cross-site"}), 403, "other sites")

    def test_values_are_not_read_by_another_origin(self):
        self.assert_refused(self.page.request("/api/values", {"Origin": "http://evil.example"}), 403, "evil.example")

    def test_a_name_that_was_rebound_to_this_machine_is_refused(self):
        for path in ["/", "/api/values", f"/?token={self.page.token}"]:
            self.assert_refused(
                self.page.request(path, {"Host": f"evil.example:{self.page.port}"}), 403, "evil.example")

    def test_a_request_without_host_is_refused(self):
        answer = self.page.raw(f"GET /api/values HTTP/1.1\r\nCookie: {self.page.cookie}\r\n\r\n".encode())
        self.assertEqual(status(answer), 403)

    def test_a_request_with_two_hosts_is_refused(self):
        answer = self.page.raw(
            f"GET /api/values HTTP/1.1\r\nHost: 127.0.0.1:{self.page.port}\r\nHost: evil.example\r\n"
            f"Cookie: {self.page.cookie}\r\n\r\n".encode())
        self.assertEqual(status(answer), 403)

    def test_nothing_is_shown_without_a_session(self):
        for path in ["/", "/page.css", "/app.js", "/api/session", "/api/plant", "/api/values", "/api/stream"]:
            response = self.page.request(path, {"Cookie": None})
            self.assertEqual(response.status, 401, path)
            self.assertNotIn("Supply", response.text)

    def test_a_made_up_session_is_refused(self):
        name = self.page.cookie.split("=")[0]
        self.assert_refused(self.page.request("/api/plant", {"Cookie": f"{name}={'0' * 32}"}), 401, "link")

    def test_wrong_tokens_are_bounded(self):
        codes = [self.page.request(f"/?token={i:032}", {"Cookie": None}).status for i in range(12)]
        self.assertEqual(codes, [401] * 10 + [429] * 2)
        # Who is signed in already goes on, and who has the token is not locked out.
        self.assertEqual(self.page.request("/api/plant").status, 200)
        self.assertEqual(self.page.request(f"/?token={self.page.token}", {"Cookie": None}).status, 303)

    def test_a_write_without_the_token_in_its_header_is_refused(self):
        self.assert_refused(self.write({"X-Page-Token": None}), 403, "X-Page-Token")

    def test_a_write_with_the_token_of_the_link_in_its_header_is_refused(self):
        self.assert_refused(self.write({"X-Page-Token": self.page.token}), 403, "X-Page-Token")

    def test_a_form_cannot_write(self):
        for kind in ["text/plain", "application/x-www-form-urlencoded", "multipart/form-data; boundary=x"]:
            self.assert_refused(self.write({"Content-Type": kind}), 415, "application/json")

    def test_a_link_cannot_write(self):
        response = self.page.request(f"/api/variables/{self.id_of(SETPOINT)}/write?value=22")
        self.assert_refused(response, 405, "POST")

    def test_other_methods_are_refused(self):
        for method in ["PUT", "DELETE", "PATCH", "OPTIONS"]:
            self.assertEqual(self.page.request("/api/plant", method=method).status, 405, method)
        self.assertIsNone(self.page.request("/api/plant", method="OPTIONS").getheader("Access-Control-Allow-Origin"))

    def test_files_outside_are_not_reached(self):
        for path in ["/../../../../etc/passwd", "/..%2f..%2fetc/passwd", "/%2e%2e/%2e%2e/etc/passwd", "//etc/passwd",
                     "/page.css/../../etc/passwd", "/index.html%00.css", "/files/../page.css", "/..\\..\\etc\\passwd"]:
            response = self.page.request(path)
            self.assertEqual(response.status, 404, path)
            self.assertNotIn("root:", response.text)

    def test_a_long_line_is_refused(self):
        answer = self.page.raw(b"GET /" + b"a" * 9000 + b" HTTP/1.1\r\n\r\n")
        self.assertEqual(status(answer), 414)

    def test_a_line_without_end_is_refused(self):
        answer = self.page.raw(b"a" * 1000000)
        self.assertEqual(status(answer), 414)

    def test_large_headers_are_refused(self):
        answer = self.page.raw(b"GET / HTTP/1.1\r\n" + b"X: y\r\n" * 10000 + b"\r\n")
        self.assertEqual(status(answer), 431)

    def test_a_large_body_is_refused(self):
        response = self.page.request(
            f"/api/variables/{self.id_of(SETPOINT)}/write",
            {"X-Page-Token": self.page.session_token, "Content-Type": "application/json"}, "POST",
            b'{"value":"' + b"1" * 1100000 + b'"}')
        self.assertEqual(response.status, 413)

    def test_a_large_body_in_chunks_is_refused(self):
        head = (
            f"POST /api/variables/{self.id_of(SETPOINT)}/write HTTP/1.1\r\nHost: 127.0.0.1:{self.page.port}\r\n"
            f"Cookie: {self.page.cookie}\r\nX-Page-Token: {self.page.session_token}\r\n"
            "Content-Type: application/json\r\nTransfer-Encoding: chunked\r\n\r\n").encode()
        answer = self.page.raw(head + (b"10000\r\n" + b"1" * 65536 + b"\r\n") * 40)
        self.assertIn(status(answer), [400, 413])

    def test_a_body_that_is_announced_as_endless_is_refused(self):
        head = (
            f"POST /api/variables/{self.id_of(SETPOINT)}/write HTTP/1.1\r\nHost: 127.0.0.1:{self.page.port}\r\n"
            f"Cookie: {self.page.cookie}\r\nX-Page-Token: {self.page.session_token}\r\n"
            "Content-Type: application/json\r\nContent-Length: 99999999999999\r\n\r\n").encode()
        self.assertEqual(status(self.page.raw(head)), 413)

    def test_a_second_request_in_a_body_is_not_answered(self):
        hidden = f"GET /api/values HTTP/1.1\r\nHost: 127.0.0.1:{self.page.port}\r\nCookie: {self.page.cookie}\r\n\r\n"
        answer = self.page.raw(
            (f"POST /api/plant HTTP/1.1\r\nHost: evil.example\r\nContent-Length: {len(hidden)}\r\n\r\n" + hidden).encode())
        self.assertEqual(status(answer), 403)
        self.assertEqual(answer.count(b"HTTP/1.1 "), 1)

    def test_a_slow_request_ends_after_a_total_time(self):
        begin = time.monotonic()
        with self.page.connect() as connection:
            # An octet now and then, so that no single read waits long.
            while time.monotonic() - begin < 9:
                connection.sendall(b"G")
                time.sleep(0.5)
            answer = received(connection)
        self.assertEqual(status(answer), 408)
        self.assertLess(time.monotonic() - begin, 14)

    def test_many_connections_that_say_nothing_are_bounded(self):
        connections = [self.page.connect() for _ in range(200)]
        try:
            # All threads are held and as many wait as may; the others are refused at once.
            deadline = time.monotonic() + 5
            while sum(map(is_closed_or_answered, connections)) < 80 and time.monotonic() < deadline:
                time.sleep(0.05)
            self.assertGreaterEqual(sum(map(is_closed_or_answered, connections)), 80)
        finally:
            for connection in connections:
                connection.close()
        # Then there is room again.
        deadline = time.monotonic() + 20
        while time.monotonic() < deadline and not answers(self.page):
            time.sleep(0.1)

    def test_streams_are_bounded(self):
        streams = [self.page.stream() for _ in range(70)]
        codes = [stream.status for stream in streams]
        self.assertEqual(codes.count(200), 64)
        refused = streams[codes.index(503)]
        self.assertIn("event streams", json.loads(refused.read())["error"])
        self.assertEqual(self.page.request("/api/values").status, 200)
        for stream in streams:
            stream.close()

    def test_streams_do_not_hold_up_the_end(self):
        streams = [self.page.stream() for _ in range(20)]
        with self.page.connect() as silent:
            _, seconds = self.page.stop()
            self.assertLess(seconds, 6)
            self.assertEqual(received(silent), b"")
        for stream in streams:
            self.assertTrue(stream.read().endswith(b'event: end\ndata: {"reason":"the run has ended"}\n\n'))
        self.page = self.enterContext(PageRun(*self.plant.defines))
        self.page.sign_in()

    def test_the_token_is_in_no_answer(self):
        for path in ["/", "/app.js", "/api/session", "/api/plant", "/api/values", "/api/events"]:
            self.assertNotIn(self.page.token, self.page.request(path).text)

    def test_every_answer_has_a_policy_for_browsers(self):
        for path, cookie in [("/", self.page.cookie), ("/", None), ("/api/plant", self.page.cookie), ("/x", None)]:
            response = self.page.request(path, {"Cookie": cookie})
            policy = response.getheader("Content-Security-Policy")
            self.assertIn("default-src 'none'", policy)
            self.assertIn("frame-ancestors 'none'", policy)
            self.assertNotIn("unsafe", policy)
            self.assertEqual(response.getheader("X-Content-Type-Options"), "nosniff")
            self.assertEqual(response.getheader("Referrer-Policy"), "no-referrer")

    def test_markup_has_no_inline_script_or_style(self):
        text = self.page.request("/").text
        self.assertEqual(re.findall(r"<script(?![^>]*\bsrc=)", text), [])
        self.assertEqual(re.findall(r"<style|\sstyle=|\son[a-z]+=|javascript:", text), [])
        self.assertEqual(re.findall(r"(?:src|href)=\"(?:https?:)?//", text), [])


def is_closed_or_answered(connection):
    connection.setblocking(False)
    try:
        return bool(connection.recv(1, 2)) or is_closed(connection)
    except BlockingIOError:
        return False
    except ConnectionResetError:
        return True


def answers(page):
    try:
        return page.request("/api/plant").status == 200
    except OSError:
        return False


class ReadOnlyPage(PageTestCase):
    OPTIONS = []

    def test_a_page_writes_only_with_its_option(self):
        response = self.page.post(f"/api/variables/{self.id_of(SETPOINT)}/write", {"value": "22.5"})
        self.assertEqual(response.status, 403)
        self.assertIn("--page-writes", json.loads(response.text)["error"])
        self.assertFalse(json.loads(self.page.request("/api/session").text)["writes"])


class HostileNames(PageTestCase):
    """The names of a project and the texts of a device may be anything."""

    def test_script_in_a_name_is_data(self):
        name = "</script><script>alert(1)</script>"
        with tempfile.TemporaryDirectory() as folder:
            project = os.path.join(folder, "plant.lua")
            with open(project, "w", encoding="utf-8") as stream:
                stream.write(f"""BACnet.new{{ Name = "{name}", Address = "127.0.0.1:1", Vars = {{ {{ Name = "{name}",
                    Description = "{name}", Type = "DataValue", ElementType = "Float", ObjectType = "analog-input",
                    ObjectProperties = "present-value", ObjectNumber = 1 }} }} }}""")
            with PageRun(project=project) as page:
                page.sign_in()
                for path in ["/api/plant", "/api/values", "/api/variables/0", "/api/events"]:
                    response = page.request(path)
                    self.assertEqual(response.getheader("Content-Type"), "application/json")
                    self.assertEqual(response.getheader("X-Content-Type-Options"), "nosniff")
                    json.loads(response.text)
                self.assertEqual(json.loads(page.request("/api/plant").text)["blocks"][0]["variables"][0]["name"], name)
                self.assertNotIn(name, page.request("/").text)


class PageOptions(PageTestCase):
    def run_page(self, *options):
        return subprocess.run(
            [WORKBENCH, "run", PLANT_PROJECT, *self.plant.defines, "--cycles", "1", *options], capture_output=True,
            text=True, timeout=60, check=False)

    def token_file(self, text, mode=0o600):
        folder = self.enterContext(tempfile.TemporaryDirectory())
        path = os.path.join(folder, "token")
        with open(path, "w", encoding="utf-8") as stream:
            stream.write(text)
        os.chmod(path, mode)
        return path

    def test_another_address_than_loopback_has_a_warning(self):
        result = self.run_page("--page", "0.0.0.0:0")
        self.assertEqual(result.returncode, 0, result.stderr)
        self.assertIn("warning: the page is plain HTTP", result.stderr)
        self.assertRegex(result.stderr, r"page: http://[0-9.]+:\d+/\?token=[0-9a-f]{32}\n")
        self.assertNotIn("warning", self.run_page("--page", "127.0.0.1").stderr)

    def test_the_token_comes_from_a_file(self):
        token = "a-token.of_22~letters1"
        result = self.run_page("--page", "--page-token-file", self.token_file(token + "\n"))
        self.assertIn(f"/?token={token}\n", result.stderr)
        self.assertNotIn("warning", result.stderr)

    def test_a_token_file_that_others_can_read_has_a_warning(self):
        result = self.run_page("--page", "--page-token-file", self.token_file("a" * 32, 0o644))
        self.assertIn("other users can read the token", result.stderr)

    def test_a_short_token_is_a_mistake(self):
        path = self.token_file("secret\n")
        result = self.run_page("--page", "--page-token-file", path)
        self.assertNotEqual(result.returncode, 0)
        self.assertIn(f"{path}: the token has 6 characters", result.stderr)
        self.assertNotIn("secret", result.stderr)

    def test_a_taken_port_is_a_mistake(self):
        result = self.run_page("--page", f"127.0.0.1:{self.page.port}")
        self.assertEqual(result.returncode, 4)
        self.assertIn(f"--page: cannot listen at 127.0.0.1:{self.page.port}: Address already in use", result.stderr)

    def test_a_wrong_address_is_a_mistake_of_the_command_line(self):
        result = self.run_page("--page", "plant.example")
        self.assertEqual(result.returncode, 2)
        self.assertIn('"plant.example" is not an address to listen at', result.stderr)
        self.assertEqual(self.run_page("--page-writes").returncode, 2)

    def test_a_proxy_with_a_given_name_may_ask(self):
        with PageRun(*self.plant.defines, "--page-host", "plant.example") as page:
            page.sign_in()
            self.assertEqual(page.request("/api/plant", {"Host": "plant.example"}).status, 200)
            self.assertEqual(page.request("/api/plant", {"Host": "other.example"}).status, 403)
