# SPDX-FileCopyrightText: 2026 The Lumora authors
# SPDX-License-Identifier: GPL-3.0-or-later
"""Profiles, sleep, permissions, notifications, sounds and the keyboard."""

import ctypes
import os
import subprocess

from gi.repository import Gio, GLib

from lumora_testing.remote import wait_for
from self_test_base import PROPERTIES, LaptopTest, call

SERVER = "org.freedesktop.Notifications"
SERVER_PATH = "/org/freedesktop/Notifications"
STORE = (
    "org.freedesktop.impl.portal.PermissionStore",
    "/org/freedesktop/impl/portal/PermissionStore",
    "org.freedesktop.impl.portal.PermissionStore",
)
LOGIN = ("org.freedesktop.login1", "/org/freedesktop/login1", "org.freedesktop.login1.Manager")


class SystemServicesTest(LaptopTest):
    """Profiles, sleep and permissions."""

    def test_profile(self):
        changes = self.signals(self.system, PROPERTIES, "PropertiesChanged")
        self.laptop.set_profile("power-saver")
        wait_for(lambda: ("net.hadess.PowerProfiles", {"ActiveProfile": "power-saver"}, []) in changes)

    def test_profiles_of_two_names(self):
        names = ("net.hadess.PowerProfiles", "org.freedesktop.UPower.PowerProfiles")

        def told():
            return [self.get(f"/{name.replace('.', '/')}", "ActiveProfile", name, name) for name in names]

        self.laptop.mock_profiles("balanced", "power-saver")
        self.assertEqual(told(), ["balanced", "power-saver"])
        changes = self.signals(self.system, PROPERTIES, "PropertiesChanged")
        self.laptop.mock_profiles("balanced", "performance")
        wait_for(lambda: (names[1], {"ActiveProfile": "performance"}, []) in changes)
        self.laptop.mock_profiles("balanced", "")
        self.assertEqual(told(), ["balanced", None])
        self.laptop.start("profiles")
        self.laptop.set_profile("power-saver")
        self.assertEqual(told()[0], "power-saver")

    def test_sleep(self):
        signals = self.signals(self.system, LOGIN[2], "PrepareForSleep")
        self.laptop.prepare_for_sleep(True)
        self.laptop.prepare_for_sleep(False)
        wait_for(lambda: signals == [(True,), (False,)])

    def test_inhibitor(self):
        arguments = GLib.Variant("(ssss)", ("sleep", "self test", "why", "delay"))
        reply, descriptors = self.system.call_with_unix_fd_list_sync(
            *LOGIN, "Inhibit", arguments, None, Gio.DBusCallFlags.NONE, -1, None, None
        )
        descriptor = descriptors.get(reply.unpack()[0])
        del descriptors
        wait_for(lambda: [lock["open"] for lock in self.own_locks()] == [True])
        os.close(descriptor)
        wait_for(lambda: [lock["open"] for lock in self.own_locks()] == [False])

    def own_locks(self):
        """The locks of this test."""
        return [lock for lock in self.laptop.inhibitors() if lock["who"] == "self test"]

    def test_permissions(self):
        with self.assertRaisesRegex(GLib.Error, "NotFound"):
            call(self.session, *STORE, "Lookup", "(ss)", "notifications", "notification")
        call(self.session, *STORE, "SetPermission", "(sbssas)", "notifications", True, "notification", "an.app", ["no"])
        self.assertEqual(
            call(self.session, *STORE, "Lookup", "(ss)", "notifications", "notification"), {"an.app": ["no"]}
        )


class NotificationsTest(LaptopTest):
    """What is sent to the notification server is seen, and answered as a user would."""

    def notify(self, summary, replaces=0, actions=(), hints=None):
        """Send a notification and give its id."""
        return call(
            self.session,
            SERVER,
            SERVER_PATH,
            SERVER,
            "Notify",
            "(susssasa{sv}i)",
            "self test",
            replaces,
            "",
            summary,
            "body",
            actions,
            hints or {},
            -1,
        )

    def test_recorded_and_replaced(self):
        first = self.notify("one", actions=["default", "Open"], hints={"urgency": GLib.Variant("y", 2)})
        self.assertEqual(self.notify("two", first), first)
        one, two = self.laptop.notifications()
        self.assertEqual(
            one,
            {
                "app_name": "self test",
                "replaces_id": 0,
                "icon": "",
                "summary": "one",
                "body": "body",
                "actions": ["default", "Open"],
                "hints": {"urgency": 2},
                "expire": -1,
                "id": first,
                "sender": self.session.get_unique_name(),
                "starts": False,
            },
        )
        self.assertEqual((two["summary"], two["replaces_id"], two["id"]), ("two", first, first))
        self.laptop.clear_notifications()
        self.assertEqual(self.laptop.notifications(), [])

    def test_action(self):
        invoked = self.signals(self.session, SERVER, "ActionInvoked")
        self.notify("other", actions=["x", "X"])
        number = self.notify("asked", actions=["settings", "Settings", "later", "Later"])
        self.laptop.press_action(number)
        wait_for(lambda: invoked == [(number, "settings")])

    def test_action_of_a_replaced_notification(self):
        invoked = self.signals(self.session, SERVER, "ActionInvoked")
        number = self.notify("first", actions=["first", "First"])
        self.notify("second", number, actions=["default", "Open", "second", "Second"])
        self.laptop.press_action(number)
        wait_for(lambda: invoked == [(number, "default")])

    def test_dismiss_in_any_order(self):
        closed = self.signals(self.session, SERVER, "NotificationClosed")
        urgency = [GLib.Variant("y", value) for value in (1, 2, 0, 1)]
        numbers = [self.notify(str(value), hints={"urgency": value}) for value in urgency]
        self.notify("replaced", numbers[1])
        order = [numbers[index] for index in (2, 1, 3, 0)]
        for number in order:
            self.laptop.dismiss(number)
        wait_for(lambda: closed == [(number, 2) for number in order])
        with self.assertRaises(GLib.Error):
            self.laptop.dismiss(order[0])

    def test_restarted_server(self):
        self.notify("lost")
        self.laptop.kill("notifications")
        with self.assertRaises(GLib.Error):
            self.notify("unheard")
        self.laptop.start("notifications")
        number = self.notify("heard", actions=["default", "Open"])
        self.laptop.press_action(number)
        self.assertEqual([entry["id"] > 0 for entry in self.laptop.notifications()], [True, False, True])

    def test_hung_server(self):
        self.laptop.hang("notifications")
        with self.assertRaisesRegex(GLib.Error, "Timeout"):
            call(self.session, SERVER, SERVER_PATH, SERVER, "GetCapabilities", milliseconds=100)
        self.laptop.resume("notifications")
        self.assertIn("actions", call(self.session, SERVER, SERVER_PATH, SERVER, "GetCapabilities"))

    def test_reset_of_a_hung_server(self):
        self.notify("left over")
        self.laptop.hang("notifications")
        self.laptop.reset()
        number = self.notify("alone", actions=["default", "Open"])
        self.laptop.dismiss(number)
        self.assertEqual([entry["id"] for entry in self.laptop.notifications()], [number])

    def test_server_with_sound(self):
        self.laptop.mock_notifications(["body", "sound"])
        self.assertEqual(call(self.session, SERVER, SERVER_PATH, SERVER, "GetCapabilities"), ["body", "sound"])
        closed = self.signals(self.session, SERVER, "NotificationClosed")
        number = self.notify("loud", hints={"sound-name": GLib.Variant("s", "bell")})
        call(self.session, SERVER, SERVER_PATH, SERVER, "CloseNotification", "(u)", number)
        wait_for(lambda: closed == [(number, 3)])
        self.assertEqual(self.laptop.notifications()[0]["hints"], {"sound-name": "bell"})
        self.laptop.start("notifications")
        self.assertNotIn("sound", call(self.session, SERVER, SERVER_PATH, SERVER, "GetCapabilities"))


class SoundTest(LaptopTest):
    """A sound that libcanberra plays is heard."""

    def test_sounds(self):
        library = ctypes.CDLL("libcanberra.so.0")
        context = ctypes.c_void_p()
        self.assertEqual(library.ca_context_create(ctypes.byref(context)), 0)
        self.addCleanup(library.ca_context_destroy, context)
        file = b"/usr/share/sounds/freedesktop/stereo/message.oga"
        for key, value in ((b"event.id", b"bell"), (b"media.filename", file)):
            self.assertEqual(library.ca_context_play(context, 1, key, value, None), 0)
        wait_for(lambda: sorted(self.laptop.sounds()) == [file.decode(), "bell"])
        self.laptop.clear_sounds()
        self.assertEqual(self.laptop.sounds(), [])


class KeyboardTest(LaptopTest):
    """A key that is held is one press."""

    def test_keys_do_not_repeat(self):
        self.assertIn("auto repeat:  off", subprocess.check_output(["xset", "q"], text=True))
