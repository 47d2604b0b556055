"""A host application of Sparkplug B: what it knows of a node by the messages that a client decoded, and whether they are in order."""


class SparkplugHost:
    """Reads the messages of one node that a Client has received; call read() to catch up.

    `node` has the metrics of the node by name, `devices` those of each device: dictionaries with name, type, value,
    timestamp and properties, as the package sparkplug-payload decodes them, kept up to date by the data. `births` counts.
    A message out of order raises AssertionError.
    """

    def __init__(self, client, node, group="dorvel"):
        self._client, self._read, self._group, self._node_name = client, 0, group, node
        self.node, self.devices, self.is_alive, self.births = {}, {}, False, {}
        self._seq, self._birth_number, self._names, self.deaths = None, None, {}, []

    def topic(self, kind, device=None):
        return "/".join(["spBv1.0", self._group, kind, self._node_name] + ([device] if device else []))

    def read(self):
        while self._read < len(self._client.messages):
            message = self._client.messages[self._read]
            self._read += 1
            levels = message["topic"].split("/")
            if levels[0] == "spBv1.0" and levels[1] == self._group and levels[3] == self._node_name and "CMD" not in levels[2]:
                assert not message["retained"], message
                self._take(levels[2], levels[4] if len(levels) > 4 else None, message["payload"])
        return self

    def wait_for(self, condition, what=""):
        return self._client.wait_for(lambda _: condition(self.read()), what)

    def value(self, device, name):
        metric = self.devices.get(device, {}).get(name)
        return metric and metric["value"]

    def _take(self, kind, device, payload):
        if kind == "NDEATH":
            number = self._number_of(payload)
            if self._birth_number is None or number == self._birth_number:  # otherwise of an earlier session
                self.is_alive, self.devices, self._seq = False, {}, None
            return
        assert kind == "NBIRTH" or self.is_alive, f"{kind} before the node was born"
        if kind == "NBIRTH":
            assert payload["seq"] == 0, payload
            self.is_alive, self.devices, self._names = True, {}, {}
            self._birth_number = self._number_of(payload)
            self.node = self._born(None, payload)
        else:
            assert payload["seq"] == (self._seq + 1) % 256, f"{kind}: {payload['seq']} after {self._seq}"
        self._seq = payload["seq"]
        if kind in ("NBIRTH", "DBIRTH"):
            self.births[device] = self.births.get(device, 0) + 1
        if kind == "DBIRTH":
            self.devices[device] = self._born(device, payload)
        elif kind == "DDEATH":
            self.deaths.append(device)
            del self.devices[device]
        elif kind in ("NDATA", "DDATA"):
            self._update(self.devices[device] if device else self.node, payload)

    @staticmethod
    def _number_of(payload):
        return next(metric["value"] for metric in payload["metrics"] if metric["name"] == "bdSeq")

    def _born(self, device, payload):
        metrics = {}
        self._names = {alias: owned for alias, owned in self._names.items() if owned[0] != device}
        for metric in payload.get("metrics", []):
            assert metric["name"] not in metrics, metric
            metrics[metric["name"]] = metric
            if "alias" in metric and device:
                assert metric["alias"] not in self._names, metric
                self._names[metric["alias"]] = (device, metric["name"])
        return metrics

    def _update(self, metrics, payload):
        for metric in payload["metrics"]:
            name = metric.get("name") or self._names[metric["alias"]][1]
            old = metrics[name]
            assert metric["type"] == old["type"], metric
            properties = old.get("properties", {}) | metric.get("properties", {})
            metrics[name] = old | metric | {"name": name, "properties": properties}
