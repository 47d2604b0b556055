"""Certificates for the tests of TLS, made by openssl in a folder of the test."""

import datetime
import os
import subprocess

CONFIGURATION = """[ca]
default_ca = tests
[tests]
database = index.txt
new_certs_dir = .
rand_serial = yes
unique_subject = no
default_md = sha256
copy_extensions = copy
policy = any
[any]
commonName = supplied
"""


class Authority:
    """A certification authority with its own key; `certificate` is the path of its certificate."""

    def __init__(self, folder, name="Test authority"):
        self._folder = os.path.join(folder, name.replace(" ", "-").lower())
        os.mkdir(self._folder)
        self._write("ca.conf", CONFIGURATION)
        self._write("index.txt", "")
        self._key("ca.key")
        self._openssl("req", "-x509", "-new", "-key", "ca.key", "-subj", f"/CN={name}", "-days", "2", "-out", "ca.pem")
        self.certificate = self._path("ca.pem")

    def issue(self, name, hosts=("IP:127.0.0.1", "DNS:localhost"), days=(-1, 1)):
        """The paths of a certificate and its key. `days` are its begin and its end, from now; without hosts it is a client's."""
        key, request, certificate = (f"{name}.{kind}" for kind in ("key", "csr", "pem"))
        self._key(key)
        extension = ["-addext", "subjectAltName=" + ",".join(hosts)] if hosts else []
        self._openssl("req", "-new", "-key", key, "-subj", f"/CN={name}", *extension, "-out", request)
        now = datetime.datetime.now(datetime.timezone.utc)
        begin, end = ((now + datetime.timedelta(days=day)).strftime("%Y%m%d%H%M%SZ") for day in days)
        self._openssl("ca", "-batch", "-notext", "-config", "ca.conf", "-cert", "ca.pem", "-keyfile", "ca.key", "-in", request,
                      "-startdate", begin, "-enddate", end, "-out", certificate)
        return self._path(certificate), self._path(key)

    def _path(self, name):
        return os.path.join(self._folder, name)

    def _write(self, name, text):
        with open(self._path(name), "w", encoding="utf-8") as stream:
            stream.write(text)

    def _key(self, name):
        self._openssl("ecparam", "-name", "prime256v1", "-genkey", "-noout", "-out", name)

    def _openssl(self, *words):
        result = subprocess.run(["openssl", *words], cwd=self._folder, stdin=subprocess.DEVNULL, stdout=subprocess.PIPE,
                                stderr=subprocess.STDOUT, text=True, check=False)
        if result.returncode != 0:
            raise AssertionError(f"openssl {' '.join(words)}: {result.stdout}")
