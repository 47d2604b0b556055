"""What the tests of publishing stand on: the broker, its certificates, the way to it, and a client that others wrote."""

import time

from broker import Tls
from certificates import Authority
from clients import Client
from proxy import Proxy
from publishing import BrokerTestCase


class BrokerOfTheTests(BrokerTestCase):
    def test_a_retained_message_outlives_a_broker_only_with_persistence(self):
        for is_kept in (True, False):
            broker = self.broker(persistence=is_kept, name=f"kept-{is_kept}")
            client = self.client(broker.url)
            client.publish("a/b", "21.5", retain=True)
            if is_kept:
                broker.wait_until_saved(b"21.5")
            broker.kill()
            broker.start()
            reader = self.client(broker.url, "#")
            reader.publish("c", "end")
            reader.wait_for(lambda client: "c" in client.newest)
            self.assertEqual("a/b" in reader.newest, is_kept)

    def test_a_proxy_cuts_blocks_and_delays(self):
        broker = self.broker()
        with Proxy(broker.port) as proxy:
            reader = self.client(broker.url, "#")
            client = self.client(f"mqtt://127.0.0.1:{proxy.port}")
            proxy.block()
            client.send(publish="blocked", text="1", qos=0)
            reader.publish("other", "1")
            reader.wait_for(lambda client: "other" in client.newest)
            self.assertNotIn("blocked", reader.newest)
            proxy.unblock()
            reader.wait_for(lambda client: "blocked" in client.newest)
            client.wait_for(lambda client: {"event": "published"} in client.events)
            proxy.delay = 0.3
            begin = time.monotonic()
            client.publish("late", "1")
            self.assertGreater(time.monotonic() - begin, 0.55)
            proxy.delay = 0
            proxy.cut()
            client.wait_for(lambda client: client.events[-1]["event"] == "connected" and proxy.accepted == 2)

    def test_passwords_and_certificates_are_checked(self):
        authority, other = Authority(self.folder), Authority(self.folder, "Other authority")
        good = self.broker(login=("plant", "secret"), tls=Tls(authority, *authority.issue("broker"), True))
        certificate, key = authority.issue("client", hosts=())
        options = {"ca": authority.certificate, "cert": certificate, "key": key, "username": "plant", "password": "secret"}
        self.client(good.url, **options).publish("a", "1")
        self.assert_refused(good.url, options | {"password": "wrong"}, "Not authorized")
        self.assert_refused(good.url, options | {"ca": other.certificate}, "self-signed certificate|unable to")
        expired = self.broker(tls=Tls(authority, *authority.issue("late", days=(-9, -1))), name="expired")
        self.assert_refused(expired.url, options, "expired")
        named = self.broker(tls=Tls(authority, *authority.issue("named", hosts=("DNS:broker.example",))), name="named")
        self.assert_refused(named.url, options, "altnames")

    def assert_refused(self, url, options, reason):
        with self.assertRaisesRegex(AssertionError, f"'reason': .*({reason})"):
            Client(url, **options)
