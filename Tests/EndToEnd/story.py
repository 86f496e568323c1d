# SPDX-FileCopyrightText: 2026 The Lumora authors
# SPDX-License-Identifier: GPL-3.0-or-later
"""A short story of a battery: drained, plugged in, charged over the limit, snoozed and unplugged.

At the end the popover and the settings are opened, and pictures of them kept. It tells each change of the battery
and each notification as it comes, and fails when the story did not come out as it must. Run it in the
simulated laptop: story.py BUNDLE
"""

import sys
import time

from gi.repository import Gio

from lumora_testing.bundle import Lumora, windows
from lumora_testing.remote import RemoteLaptop, wait_for
from lumora_testing.screen import click, key, settled_screen, x_screen

KINDS = {
    "Charge limit reached": "chargeLimit",
    "Low battery": "low",
    "Try Low Power Mode": "lowPower",
    "Plugged in for a long time": "tooLong",
    "Battery health is low": "health",
}
EXPECTED = [
    (
        "lowPower",
        "Try Low Power Mode",
        "Battery is at 29%. Turn on Low Power Mode (System Settings, Battery) to stretch it.",
        "message-new-instant",
    ),
    ("low", "Low battery", "Battery is at 20%. Plug in soon.", "message-new-instant"),
    ("chargeLimit", "Charge limit reached", "Battery is at 80%. Unplug to keep it healthy.", "message-new-instant"),
]
PERCENTS = [34, 32, 30, 29, 25, 20, 30, 45, 60, 75, 79, 80, 79, 29, 19]
# So that one can follow the story.
PACE_SECONDS = 0.5
PANEL_HEIGHT = 28


class Story:
    """What happens, step by step, and what the desktop showed of it."""

    def __init__(self, laptop, lumora):
        self.laptop = laptop
        self.lumora = lumora
        self.session = Gio.bus_get_sync(Gio.BusType.SESSION)
        self.told = []

    def battery(self, percent, status):
        """One step of the battery."""
        self.laptop.set_battery(percent=percent, status=status)
        print(f"battery       {percent:3} %  {status}", flush=True)
        # Each step is a reading of its own, on a slow machine, too.
        wait_for(lambda: f"{percent}%" in self.lumora.state(self.session), f"the reading of {percent} %")
        time.sleep(PACE_SECONDS)
        self.tell_notifications()

    def adapter(self, online):
        """The adapter's plug."""
        self.laptop.set_adapter(online)
        print(f"adapter       {'in' if online else 'out'}", flush=True)

    def tell_notifications(self):
        """Say what the notification server got since the last time, with the sound that was heard."""
        sent = self.laptop.notifications()
        for number in range(len(self.told), len(sent)):
            sound = wait_for(lambda n=number: self.laptop.sounds()[n : n + 1], "the sound")[0]
            title, body = sent[number]["summary"], sent[number]["body"]
            self.told.append((KINDS.get(title, "?"), title, body, sound))
            print("notification  " + " | ".join(self.told[-1]), flush=True)

    def wait_for_notification(self, number):
        """Wait until that many notifications have been shown; the last one's id."""
        wait_for(lambda: len(self.laptop.notifications()) >= number, f"notification {number}")
        self.tell_notifications()
        return wait_for(lambda: self.laptop.notifications()[number - 1]["id"], "its id")


def play(story):
    """The story itself."""
    laptop, lumora = story.laptop, story.lumora
    lumora.wait_until_saved(lambda sample: sample["p"] == 34, "the first sample")
    for percent in (32, 30, 29):
        story.battery(percent, "Discharging")
    story.wait_for_notification(1)
    for percent in (25, 20):
        story.battery(percent, "Discharging")
    story.wait_for_notification(2)

    story.adapter(True)
    story.battery(20, "Charging")
    lumora.wait_until_saved(lambda sample: sample["a"] and sample["c"], "the sample of the charging")
    for percent in (30, 45, 60, 75, 79, 80):
        story.battery(percent, "Charging")
    identifier = story.wait_for_notification(3)

    print('pressed       "Snooze 1 hour"', flush=True)
    laptop.press_action(identifier)
    until = wait_for(lambda: lumora.settings().get("snoozeUntil"), "the snooze")
    print(f"snoozed       for {(until - time.time()) / 60:.0f} min", flush=True)

    story.adapter(False)
    story.battery(79, "Discharging")
    lumora.wait_until_saved(lambda sample: not sample["a"], "the sample on battery")
    # Low again, but nobody is to be disturbed now.
    for percent in (29, 19):
        story.battery(percent, "Discharging")
    return until


def show_windows():
    """Click on the item in the panel, and on to the settings; the pictures' paths."""
    left, top, right, bottom = wait_for(lambda: x_screen().item_in_panel(PANEL_HEIGHT), "the item")
    click((left + right) // 2, (top + bottom) // 2)
    wait_for(lambda: windows("Lumora"), "the popover")
    pictures = [settled_screen().keep("popover")]
    key("shift+Tab", "shift+Tab", "space")
    wait_for(lambda: windows("Lumora Settings"), "the settings")
    return pictures + [settled_screen().keep("settings")]


def without_repeats(values):
    """The values, each run of equal ones as one."""
    return [value for index, value in enumerate(values) if index == 0 or value != values[index - 1]]


def tell(bundle, **environment):
    """Play the story and compare; the exit code. The environment is Lumora's beside the laptop's."""
    laptop = RemoteLaptop()
    laptop.set_battery(percent=34, status="Discharging")
    print("battery        34 %  Discharging", flush=True)
    with Lumora(bundle, **environment) as lumora:
        story = Story(laptop, lumora)
        until = play(story)
        story.tell_notifications()
        pictures = show_windows()
        code = lumora.end()
        samples = lumora.history()

    print("history       the last samples:")
    for sample in samples[-5:]:
        print(f"              {sample}")
    for picture in pictures:
        print(f"picture       {picture}")
    faults = [
        text
        for text, holds in (
            (f"exit code {code}", code == 0),
            (f"notifications {story.told}", story.told == EXPECTED),
            (f"snooze until {until}", 3500 < until - time.time() <= 3600),
            (
                f"percents {[sample['p'] for sample in samples]}",
                without_repeats([sample["p"] for sample in samples]) == PERCENTS,
            ),
        )
        if not holds
    ]
    for fault in faults:
        print(f"WRONG         {fault}")
    print("The story went wrong." if faults else "The story came out as it must.")
    return 1 if faults else 0


if __name__ == "__main__":
    sys.exit(tell(sys.argv[1]))
