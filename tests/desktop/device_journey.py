# SPDX-License-Identifier: LGPL-2.1-or-later
"""Journeys whose jobs go to a device on the network, which the test plays."""

import socket

from journey import Journey

PATIENCE = 20


class DeviceJourney(Journey):
    """Has a device that listens at `address`."""

    def setUp(self):
        super().setUp()
        self.listener = socket.create_server(("127.0.0.1", 0))
        self.listener.settimeout(PATIENCE)
        self.addCleanup(self.listener.close)
        self.address = "127.0.0.1:%d" % self.listener.getsockname()[1]

    def arriving(self, connection):
        """All that comes until the other side has nothing more to say."""
        connection.settimeout(PATIENCE)
        parts = []
        while part := connection.recv(1 << 20):
            parts.append(part)
        return b"".join(parts)

    def next_job(self):
        """The next job that comes, to its end."""
        with self.listener.accept()[0] as connection:
            return self.arriving(connection)

    def nothing_has_arrived(self):
        """Nobody has called the device up to now."""
        self.listener.settimeout(0)
        with self.assertRaises(BlockingIOError):
            self.listener.accept()
        self.listener.settimeout(PATIENCE)

    def add_recipient(self, desktop, fax):
        """Adds Ann Lee in the fax dialog."""
        fax.press("AddFaxRcpt")
        dialog = desktop.window("LanFax Add Recipient Window")
        dialog.fill(RecipientName="Ann Lee", RecipientNumber="555-0101")
        dialog.keys("Return")
        dialog.await_gone()
        fax.await_active()
