# SPDX-FileCopyrightText: 2026 The Lumora authors
# SPDX-License-Identifier: GPL-3.0-or-later
"""The object on the session bus by which tests set the laptop and look at it."""

import os
import signal

from gi.repository import GLib

from bus_object import PROPERTIES, BusObject, unpack_shallow
from buses import call, own
from notifications import Notifications
from parts import notifications_mock
from processes import LaptopError, wait_until
from sounds import Sounds
from stand_ins import ADAPTER_PATH, BATTERY_PATH, DEVICE, UPOWER, UPOWER_PATH, MockProfiles, MockUPower, SettingsPortal

NAME = "org.lumora.Laptop"
PATH = "/org/lumora/Laptop"
LOGIN = ("org.freedesktop.login1", "/org/freedesktop/login1", "org.lumora.Laptop.Login")
PROFILES = ("net.hadess.PowerProfiles", "/net/hadess/PowerProfiles")
NEWER_PROFILES = "org.freedesktop.UPower.PowerProfiles"
PERMISSIONS = (
    "org.freedesktop.impl.portal.PermissionStore",
    "/org/freedesktop/impl/portal/PermissionStore",
    "org.freedesktop.impl.portal.PermissionStore",
)
BATTERY_AT_THE_START = {
    "Percentage": 60.0,
    "State": 2,
    "IsPresent": True,
    "EnergyFull": 45.0,
    "EnergyFullDesign": 50.0,
    "EnergyRate": 10.0,
    "Voltage": 11.4,
    "ChargeCycles": 120,
    "Temperature": 31.2,
    "Model": "LP-50",
}


class Control:
    """Everything that can be done to the laptop; each call returns when the thing is done."""

    def __init__(self, laptop):
        self._laptop = laptop
        self._supplies = laptop.supplies
        self._services = laptop.services
        self._notifications = Notifications(laptop.session, laptop.environment, laptop.folder)
        self._sounds = Sounds(f"{laptop.folder}/sound.log")
        self._portal = SettingsPortal(laptop.session)
        self._mock_upower = None
        self._mock_profiles = None
        self._mock_notifications = None
        BusObject(laptop.session.connection, PATH, NAME, self._methods())
        own(laptop.session.connection, NAME)

    def _methods(self):
        return {
            "SetBattery": ("s a{sv}", "", self._set_battery),
            "SetAdapter": ("b", "", self._supplies.set_adapter),
            "AddAdapter": ("", "", lambda: self._supplies.set_adapter(False)),
            "AddMouse": ("i", "", self._supplies.add_mouse),
            "AddUps": ("i", "", self._supplies.add_ups),
            "AddUsbCharger": ("b d d", "", self._supplies.set_usb_charger),
            "RemoveDevice": ("s", "", self._supplies.remove),
            "Stop": ("s", "", lambda part: self._end(part, signal.SIGTERM)),
            "Kill": ("s", "", lambda part: self._end(part, signal.SIGKILL)),
            "Hang": ("s", "", self._services.hang),
            "Continue": ("s", "", self._services.wake),
            "Start": ("s", "", self._start),
            "SetProfile": ("s", "", self._set_profile),
            "MockProfiles": ("s s", "", self._replace_profiles),
            "SetAppearance": ("s v", "", self._portal.set),
            "AnnounceAppearance": ("s v", "", self._portal.announce),
            "OfferAppearance": ("s v", "", self._offer_appearance),
            "StartPortal": ("", "", self._portal.show),
            "SlowAppearance": ("i", "", self._portal.slow),
            "PrepareForSleep": ("b", "", self._prepare_for_sleep),
            "RefuseInhibit": ("i", "", self._refuse_inhibit),
            "Inhibitors": ("", "aa{sv}", self._inhibitors),
            "Notifications": ("", "aa{sv}", lambda: (self._notifications.sent(),)),
            "ClearNotifications": ("", "", self._notifications.clear),
            "PressAction": ("u", "", self._on_dunst(self._notifications.press_action)),
            "Dismiss": ("u", "", self._on_dunst(self._notifications.dismiss)),
            "MockNotifications": ("as", "", self._replace_notifications),
            "Sounds": ("", "as", lambda: (self._sounds.played(),)),
            "ClearSounds": ("", "", self._sounds.clear),
            "MockUPower": ("b", "", self._replace_upower),
            "MockSlowUPower": ("i", "", lambda delay_ms: self._replace_upower(True, delay_ms)),
            "MockRefusingUPower": ("i", "", lambda times: self._replace_upower(True, refusals=times)),
            "SetMockProperty": ("s v", "", lambda name, value: self._mock().set_property(name, value)),
            "PropertyBurst": ("i", "", lambda count: self._mock().burst(count)),
            "Reset": ("", "", self._reset),
        }

    def _set_battery(self, name, values):
        self._supplies.set_battery(name, {key: value.unpack() for key, value in values.items()})

    def _start(self, part):
        self._remove_stand_in(part)
        if self._services.running(part):
            return
        self._services.start(part)
        if part == "notifications":
            self._notifications.server_was_started()

    def _end(self, part, number):
        self._remove_stand_in(part)
        self._services.end(part, number)

    def _remove_stand_in(self, part):
        if part == "upower":
            self._replace_upower(False)
        if part == "profiles":
            self._end_mock_profiles()
        if part == "notifications":
            self._end_mock_notifications()

    def _set_profile(self, profile):
        name, path = PROFILES
        call(
            self._laptop.system.connection,
            name,
            path,
            PROPERTIES,
            "Set",
            GLib.Variant("(ssv)", (name, "ActiveProfile", GLib.Variant("s", profile))),
        )

    def _replace_profiles(self, former, current):
        if not self._mock_profiles:
            self._services.end("profiles", signal.SIGTERM)
            self._mock_profiles = MockProfiles(self._laptop.system)
        self._mock_profiles.show(PROFILES[0], former)
        self._mock_profiles.show(NEWER_PROFILES, current)

    def _end_mock_profiles(self):
        if self._mock_profiles:
            self._mock_profiles.remove()
            self._mock_profiles = None

    def _offer_appearance(self, key, value):
        address = self._laptop.session.address
        this = f"--address={address} --dest={NAME} --object-path={PATH} --method={NAME}.StartPortal"
        self._portal.offer(key, value, f"/usr/bin/gdbus call {this}")

    def _prepare_for_sleep(self, begins):
        call(self._laptop.system.connection, *LOGIN, "PrepareForSleep", GLib.Variant("(b)", (begins,)))

    def _refuse_inhibit(self, times):
        call(self._laptop.system.connection, *LOGIN, "RefuseInhibit", GLib.Variant("(i)", (times,)))

    def _inhibitors(self):
        reply = call(self._laptop.system.connection, *LOGIN, "AllInhibitors")
        return unpack_shallow(reply)

    def _on_dunst(self, function):
        def checked(number):
            if not self._services.awake("notifications"):
                raise LaptopError("notifications does not run, or hangs")
            function(number)

        return checked

    def _replace_notifications(self, capabilities):
        self._end("notifications", signal.SIGTERM)
        self._mock_notifications = notifications_mock(self._laptop.session, capabilities)
        self._services.run_besides(self._mock_notifications)
        self._notifications.server_was_started()

    def _end_mock_notifications(self):
        if self._mock_notifications:
            self._mock_notifications.end(signal.SIGTERM)
            self._mock_notifications = None

    def _replace_upower(self, owned, delay_ms=0, refusals=0):
        if owned and not self._mock_upower:
            self._services.end("upower", signal.SIGTERM)
            self._mock_upower = MockUPower(self._laptop.system, delay_ms, refusals)
        elif not owned and self._mock_upower:
            self._mock_upower.remove()
            self._mock_upower = None

    def _mock(self):
        if not self._mock_upower:
            raise LaptopError("the real UPower runs: call MockUPower(true) first")
        return self._mock_upower

    def _reset(self):
        self._replace_upower(False)
        self._end_mock_notifications()
        self._end_mock_profiles()
        self._portal.hide()
        # UPower reads a pack's capacities only when the pack is put in, and where it is of 2023 or later it tells no
        # power for ten seconds after the adapter's plug was moved: a new one knows of nothing that was before.
        self._services.end("upower", signal.SIGTERM)
        self._supplies.reset()
        restarted = not self._services.running("notifications")
        self._services.reset()
        if restarted:
            self._notifications.server_was_started()
        self._reset_what_runs()
        self._notifications.clear()
        self._sounds.clear()

    def _reset_what_runs(self):
        if self._services.chosen("upower"):
            wait_until(self._upower_is_as_at_the_start, "UPower's notice of the reset")
        if self._services.chosen("notifications"):
            self._notifications.close_all()
        if self._services.chosen("profiles"):
            self._set_profile("balanced")
        if self._services.chosen("permissions"):
            self._forget_permissions()

    def _upower_is_as_at_the_start(self):
        devices = call(self._laptop.system.connection, UPOWER, UPOWER_PATH, UPOWER, "EnumerateDevices").unpack()[0]
        if set(devices) != {BATTERY_PATH, ADAPTER_PATH}:
            return False
        battery = call(
            self._laptop.system.connection, UPOWER, BATTERY_PATH, PROPERTIES, "GetAll", GLib.Variant("(s)", (DEVICE,))
        ).unpack()[0]
        daemon = call(
            self._laptop.system.connection, UPOWER, UPOWER_PATH, PROPERTIES, "GetAll", GLib.Variant("(s)", (UPOWER,))
        ).unpack()[0]
        return daemon["OnBattery"] and all(battery[name] == value for name, value in BATTERY_AT_THE_START.items())

    def _forget_permissions(self):
        for table in self._permission_tables():
            reply = call(self._laptop.session.connection, *PERMISSIONS, "List", GLib.Variant("(s)", (table,)))
            for name in reply.unpack()[0]:
                call(self._laptop.session.connection, *PERMISSIONS, "Delete", GLib.Variant("(ss)", (table, name)))

    def _permission_tables(self):
        folder = f"{self._laptop.folder}/permissions/flatpak/db"
        return os.listdir(folder) if os.path.isdir(folder) else []
