# SPDX-License-Identifier: LGPL-2.1-or-later
"""A device on the network, as far as the driver asks it: a few SNMP objects, on loopback."""

import socket
import threading

ROOT = "1.3.6.1.4.1.32473.8.74.6.2.1.9.7.155."
SERVER = ROOT + "114.11"
BASE = "o=Harbour"
# What the device says of its directory, beside where that is.
SETTINGS = {
    "1.3.6.1.2.1.1.1.0": "Quelm Fax 7", ROOT + "118.1": BASE, ROOT + "122.1": "cn=fax", ROOT + "384.80": "cn",
    ROOT + "384.81": "mail", ROOT + "384.83": "telephoneNumber", ROOT + "384.84": "postalAddress",
    ROOT + "384.85": "physicalDeliveryOfficeName", ROOT + "384.86": "l", ROOT + "384.87": "st",
    ROOT + "384.88": "postalCode", ROOT + "384.89": "c", ROOT + "384.91": "facsimileTelephoneNumber",
}
CARL = {"cn": "Carl Reed", "sn": "Reed", "givenName": "Carl", "facsimileTelephoneNumber": "555-0103"}

INTEGER, OCTETS, OBJECT, SEQUENCE = 0x02, 0x04, 0x06, 0x30
GET, RESPONSE, NO_SUCH_OBJECT = 0xA0, 0xA2, 0x80


def encoded(tag, content):
    """One value with its tag and length."""
    length = len(content)
    if length < 0x80:
        return bytes([tag, length]) + content
    size = (length.bit_length() + 7) // 8
    return bytes([tag, 0x80 | size]) + length.to_bytes(size, "big") + content


def decoded(data):
    """The values of a sequence's content, each as (tag, content)."""
    values = []
    while data:
        tag, length, start = data[0], data[1], 2
        if length & 0x80:
            start += length & 0x7F
            length = int.from_bytes(data[2:start], "big")
        values.append((tag, data[start:start + length]))
        data = data[start + length:]
    return values


def dotted(content):
    """An object's name in numbers."""
    numbers, value = [], 0
    for byte in content:
        value = value << 7 | byte & 0x7F
        if byte < 0x80:
            numbers.append(value)
            value = 0
    return ".".join(map(str, [numbers[0] // 40, numbers[0] % 40, *numbers[1:]]))


class Device:
    """Answers the requests of version 2c until it is closed."""

    def __init__(self, objects):
        self.objects = objects
        self.socket = socket.socket(socket.AF_INET, socket.SOCK_DGRAM)
        self.socket.bind(("127.0.0.1", 0))
        self.address = "127.0.0.1:%d" % self.socket.getsockname()[1]
        self.thread = threading.Thread(target=self._serve)
        self.thread.start()

    def _serve(self):
        while True:
            request, peer = self.socket.recvfrom(65536)
            if not request:
                return
            version, community, (kind, request) = decoded(decoded(request)[0][1])
            if kind != GET:
                continue
            number, *_, (_, bindings) = decoded(request)
            answers = b"".join(self._answer(decoded(binding)[0][1]) for _, binding in decoded(bindings))
            zero = encoded(INTEGER, b"\0")
            reply = encoded(RESPONSE, encoded(*number) + zero + zero + encoded(SEQUENCE, answers))
            self.socket.sendto(encoded(SEQUENCE, encoded(*version) + encoded(*community) + reply), peer)

    def _answer(self, name):
        text = self.objects.get(dotted(name))
        value = encoded(NO_SUCH_OBJECT, b"") if text is None else encoded(OCTETS, text.encode())
        return encoded(SEQUENCE, encoded(OBJECT, name) + value)

    def close(self):
        with socket.socket(socket.AF_INET, socket.SOCK_DGRAM) as end:
            end.sendto(b"", self.socket.getsockname())
        self.thread.join()
        self.socket.close()


class Directory:
    """The server that the device names: it lets everybody in and finds the same people for everybody."""

    BIND, BOUND, SEARCH, ENTRY, DONE = 0x60, 0x61, 0x63, 0x64, 0x65
    SUCCESS = encoded(0x0A, b"\0") + encoded(OCTETS, b"") + encoded(OCTETS, b"")

    def __init__(self, *people, port=0):
        self.people = people
        self.socket = socket.create_server(("127.0.0.1", port))
        self.address = "127.0.0.1:%d" % self.socket.getsockname()[1]
        self.talks = []
        self.closing = False
        self.thread = threading.Thread(target=self._serve)
        self.thread.start()

    def _serve(self):
        while True:
            talk, _ = self.socket.accept()
            if self.closing:
                talk.close()
                return
            self.talks.append(threading.Thread(target=self._talk, args=(talk,)))
            self.talks[-1].start()

    def _talk(self, talk):
        with talk, talk.makefile("rwb") as stream:
            while head := stream.read(2):
                length = head[1]
                if length & 0x80:
                    length = int.from_bytes(stream.read(length & 0x7F), "big")
                number, (kind, _) = decoded(stream.read(length))[:2]

                def say(tag, content):
                    stream.write(encoded(SEQUENCE, encoded(*number) + encoded(tag, content)))

                if kind == self.BIND:
                    say(self.BOUND, self.SUCCESS)
                elif kind == self.SEARCH:
                    for person in self.people:
                        say(self.ENTRY, self._entry(person))
                    say(self.DONE, self.SUCCESS)
                stream.flush()

    @staticmethod
    def _entry(person):
        attributes = b"".join(
            encoded(SEQUENCE, encoded(OCTETS, key.encode()) + encoded(0x31, encoded(OCTETS, value.encode())))
            for key, value in person.items())
        name = f"cn={person['cn']},{BASE}"
        return encoded(OCTETS, name.encode()) + encoded(SEQUENCE, attributes)

    def close(self):
        """Ends it; who is still talking to it has ended before."""
        self.closing = True
        socket.create_connection(self.socket.getsockname()).close()
        self.thread.join()
        self.socket.close()
        for talk in self.talks:
            talk.join()
