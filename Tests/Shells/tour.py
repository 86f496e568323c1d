#!/usr/bin/python3
# SPDX-FileCopyrightText: 2026 The Lumora authors
# SPDX-License-Identifier: GPL-3.0-or-later
"""Goes through the checks on one desktop: tour.py [--times N] DESKTOP [PART OF A CHECK'S NAME...]
Makes its sheet instead: tour.py --sheet DESKTOP

Runs in the simulated laptop, as an ordinary user, with Lumora installed. Leaves results/results.json, a picture of
every check, and logs.
"""

import argparse
import contextlib
import importlib
import json
import os
import pathlib
import subprocess
import sys
import time
import traceback

sys.dont_write_bytecode = True
HERE = pathlib.Path(__file__).resolve().parent
RESULTS = pathlib.Path("results").resolve()
os.environ["LUMORA_PICTURES"] = str(RESULTS / "pictures")
sys.path.insert(0, str(HERE))

from gi.repository import GLib  # noqa: E402

import sheet  # noqa: E402
from checks import CHECKS  # noqa: E402
from desktop import CannotBe, NotSeen  # noqa: E402
from lumora_testing.bundle import DOUBLE_CLICK_SECONDS, Lumora, forget  # noqa: E402
from lumora_testing.remote import RemoteLaptop, wait_for  # noqa: E402

SETTINGS = "Lumora Settings"
BUNDLE = "/usr/lib/lumora/Lumora.app"
HISTORY = pathlib.Path(os.environ["XDG_DATA_HOME"]) / "Lumora" / "history.json"
LOG = RESULTS / "lumora.log"
# Magnified, so that one sees in the picture what a user sees.
FACTOR = 4
OTHER_WINDOW = """
import gi
gi.require_version("Gtk", "3.0")
from gi.repository import Gtk
window = Gtk.Window(title="Another window")
window.set_default_size(700, 420)
window.show_all()
Gtk.main()
"""


class Tour:
    """The desktop, the laptop that it runs on, a Lumora in it, and what the checks do with them."""

    def __init__(self, desktop, laptop, times):
        self.desktop = desktop
        self.laptop = laptop
        self.times = times
        self.lumora = None
        self.name = ""

    def begin(self, name):
        """Have everything as before the first check."""
        self.name = name
        self.end_lumora()
        self.laptop.reset()
        forget()
        self.start_lumora()
        self.wait_for_item()
        self.close_everything()

    def start_lumora(self):
        """As the session does; what it says on its standard error is kept."""
        own = os.dup(2)
        with open(LOG, "ab") as log:
            os.dup2(log.fileno(), 2)
        try:
            self.lumora = Lumora(BUNDLE)
            self.lumora.__enter__()
        finally:
            os.dup2(own, 2)
            os.close(own)

    @staticmethod
    def said():
        """What every Lumora so far has said on its standard error."""
        return LOG.read_text(encoding="utf-8", errors="replace") if LOG.exists() else ""

    def end_lumora(self):
        """And wait until its item has gone."""
        if self.lumora:
            self.lumora.end()
            self.lumora = None
            wait_for(lambda: self.desktop.item() is None, "the end of the item")

    def wait_for_item(self):
        """The box of the item once it no longer moves, with its text where the shell tells it."""

        def whole():
            box = self.desktop.item()
            text = self.desktop.item_text()
            if not box or (text is not None and "%" not in text):
                return None
            # It may be drawn, and moved by that, after the shell tells of it.
            self.still()
            return box == self.desktop.item() and box

        return wait_for(whole, "the item with its percent", 30)

    def still(self):
        """Wait until the screen no longer changes."""
        last = [self.desktop.picture()]

        def same():
            last.append(self.desktop.picture())
            return last[-1].changed_since(last[-2], 0) is None

        wait_for(same, "a screen that is still")

    def keep(self, name):
        """A picture of the whole screen."""
        picture = self.desktop.picture()
        picture.keep(f"{self.name}-{name}" if name != self.name else name)
        return picture

    def keep_item(self, name):
        """A picture of the item, magnified."""
        picture = self.desktop.picture()
        picture.keep(f"{self.name}-{name}", self.desktop.item().corners, FACTOR)
        return picture

    def open_thing(self):
        """What of Lumora's is open: "menu", "popover", or nothing."""
        if self.desktop.menu_open():
            return "menu"
        return "popover" if self.desktop.popover() else None

    def open_popover(self):
        """Its box once it is drawn."""
        return self.opened(self.desktop.open_popover, self.desktop.popover, "the popover")

    def opened(self, opens, box, what):
        """Open something; its box once it is drawn and no longer changes, which may be later than the shell tells."""
        before = self.desktop.picture()
        opens()

        def drawn():
            there = box()
            return there and self.desktop.picture().area(*there.corners) != before.area(*there.corners)

        wait_for(drawn, what, 20)
        self.still()
        return box()

    def open_unfolded_popover(self):
        """With the days of a week; its box."""
        self.end_lumora()
        now = int(time.time())
        samples = [{"t": now - 600 * age, "p": 40 + age % 50, "c": False, "a": False} for age in range(7 * 144, 0, -1)]
        self.start_lumora_after(samples)
        folded = self.open_popover()

        def unfolds():
            # What comes before the daily summary does nothing by that.
            self.desktop.key("Tab")
            self.desktop.key("space")
            self.still()
            box = self.desktop.popover()
            return box and box.height > folded.height and box

        return wait_for(unfolds, "the daily summary")

    def wait_until_closed(self):
        """Until there is no popover."""
        try:
            wait_for(lambda: not self.desktop.popover(), "its end", 10)
        except TimeoutError:
            self.keep("stays")
            raise NotSeen("it stays") from None

    def close_everything(self):
        """Menu, popover, settings and tooltip."""
        for _ in range(3):
            if thing := self.open_thing():
                self.desktop.close_menu() if thing == "menu" else self.desktop.key("Escape")
                with contextlib.suppress(TimeoutError):
                    wait_for(lambda: not self.open_thing(), "the end of what is open", 5)
        if self.settings():
            self.desktop.key("Escape")
            with contextlib.suppress(TimeoutError):
                wait_for(lambda: not self.settings(), "the end of the settings", 5)
        if self.open_thing() or self.settings():
            self.end_lumora()
            self.start_lumora()
            self.wait_for_item()
        self.desktop.move(*self.desktop.wallpaper())
        self.let_double_click_pass()

    @staticmethod
    def let_double_click_pass():
        """So that the next click counts as one of its own."""
        time.sleep(DOUBLE_CLICK_SECONDS)

    @staticmethod
    def let_come():
        """As long as something takes to come that should not."""
        time.sleep(3)

    def open_menu(self):
        """What is to be seen of it beside the item, which shows the percent, too."""
        item = self.desktop.item()
        picture, (left, top, right, bottom) = self.brought_by(self.show_menu)
        if item.top > picture.height // 2:
            return picture.area(left, top, right, item.top)
        return picture.area(left, item.bottom, right, bottom)

    def show_menu(self):
        """Open it and wait for it."""
        self.desktop.open_menu()
        wait_for(self.desktop.menu_open, "the menu", 10)

    def brought_by(self, opens):
        """The screen once something was opened and no longer changes, and what of it changed by that."""
        self.still()
        before = self.desktop.picture()
        opens()
        # A window may be there before it is drawn.
        wait_for(lambda: self.desktop.picture().changed_since(before, 0), "something new on the screen")
        self.still()
        picture = self.desktop.picture()
        return picture, picture.changed_since(before, 0)

    def wait_for_line(self, words):
        """Wait until a line of the open menu has these words; where the shell does not tell, the pictures have to."""
        if self.desktop.menu() is not None:
            wait_for(lambda: any(words in line.text for line in self.desktop.menu()), f"“{words}” in the menu", 30)

    def choose(self, words, number):
        """See Desktop; and wait until the menu is closed."""
        self.desktop.choose(words, number)
        wait_for(lambda: not self.desktop.menu_open(), "the end of the menu", 10)

    def settings(self):
        """The box of the settings window, or None."""
        boxes = [window.box for window in self.desktop.windows() if window.title == SETTINGS]
        return boxes[0] if boxes else None

    def open_settings(self):
        """Its box once it is drawn."""
        command = ["gapplication", "action", "org.lumora.Lumora", "settings"]
        return self.opened(lambda: subprocess.run(command, check=True), self.settings, "the settings")

    @contextlib.contextmanager
    def other_window(self):
        """The box of a window of another program."""
        child = subprocess.Popen([sys.executable, "-c", OTHER_WINDOW])

        def box():
            return next((each.box for each in self.desktop.windows() if each.title == "Another window"), None)

        try:
            wait_for(box, "another window", 20)
            self.still()
            yield box()
        finally:
            child.kill()
            child.wait()
            wait_for(lambda: not box(), "the end of the other window")

    def battery(self, percent, charging):
        """Set the battery and wait until Lumora knows."""
        self.laptop.set_adapter(charging)
        self.laptop.set_battery(percent=percent, status="Charging" if charging else "Discharging")

        def known():
            state = self.lumora.state(self.desktop.bus)
            return f"{percent}%" in state and ("On battery" in state) is not charging

        wait_for(known, f"{percent} %, {'charging' if charging else 'on battery'}")

    def shown(self, title):
        """The notification with that title, or None."""
        return next((each for each in self.desktop.notifications() if each.title == title), None)

    def reach_limit(self):
        """Charge above the limit."""
        self.battery(70, charging=True)
        self.battery(85, charging=True)

    def run_low(self):
        """Use the battery up, in the power-saving mode: else a second reminder would come with the first."""
        self.laptop.set_profile("power-saver")
        self.battery(60, charging=False)
        self.battery(15, charging=False)

    def reminders(self):
        """Each reminder: its title and what brings it."""

        def saving():
            self.laptop.set_profile("balanced")
            self.battery(60, charging=False)
            self.battery(25, charging=False)

        def worn():
            # Of a pack that is put in the service reads what it holds.
            self.laptop.remove_device("BAT0")
            self.laptop.set_battery(percent=62, full=35.0, design=50.0, status="Discharging")

        return [
            ("Charge limit reached", self.reach_limit),
            ("Low battery", self.run_low),
            ("Try Low Power Mode", saving),
            ("Battery health is low", worn),
            ("Plugged in for a long time", self.stay_plugged_in),
        ]

    def stay_plugged_in(self):
        """For eight hours, as the history tells that a new Lumora finds, but for as long as it takes to start."""
        self.end_lumora()
        self.laptop.set_adapter(True)
        self.laptop.set_battery(percent=90, status="Not charging")
        now = int(time.time())
        samples = [{"t": now - 60 * age + 20, "p": 90, "c": False, "a": True} for age in range(8 * 60, 0, -1)]
        self.start_lumora_after(samples)

    def start_lumora_after(self, samples):
        """With this history."""
        HISTORY.parent.mkdir(parents=True, exist_ok=True)
        HISTORY.write_text(json.dumps(samples))
        self.start_lumora()
        self.wait_for_item()


def attempt(tour, function):
    """What came of a check: the word for it, and a remark."""
    try:
        return "seen", function(tour) or ""
    except CannotBe as why:
        return "cannot be", str(why)
    except (NotSeen, TimeoutError, GLib.Error) as why:
        return "not seen", str(why)
    except Exception as why:  # whatever a shell answers, the other checks go on
        traceback.print_exc()
        return "not seen", f"{type(why).__name__}: {why}"


def main():
    """Start the desktop, do the checks, write what came of them."""
    parser = argparse.ArgumentParser(description=__doc__)
    parser.add_argument("desktop")
    parser.add_argument("--times", type=int, default=1)
    parser.add_argument("--sheet", action="store_true")
    parser.add_argument("checks", nargs="*")
    options = parser.parse_args()
    RESULTS.mkdir(exist_ok=True)
    laptop = RemoteLaptop()
    desktop = importlib.import_module(f"desktops.{options.desktop}").DESKTOP(RESULTS)
    results = {}
    begun = time.monotonic()
    try:
        desktop.start()
        print(f"{desktop.name} after {time.monotonic() - begun:.0f} s", flush=True)
        tour = Tour(desktop, laptop, options.times)
        if options.sheet:
            try:
                sheet.make(tour, RESULTS / "sheet.png")
            except BaseException:
                tour.keep("not-made")
                raise
        for name, (title, function) in CHECKS.items():
            if options.sheet or options.checks and not any(part in name for part in options.checks):
                continue
            since = time.monotonic()
            outcome, remark = attempt(tour, lambda tour: tour.begin(name) or function(tour))  # noqa: B023
            with contextlib.suppress(Exception):
                tour.keep(outcome.replace(" ", "-"))
            results[name] = {"title": title, "outcome": outcome, "remark": remark}
            print(f"{name}: {outcome} {remark} ({time.monotonic() - since:.0f} s)", flush=True)
    finally:
        told = {"desktop": desktop.name, "checks": results}
        (RESULTS / "results.json").write_text(json.dumps(told, indent=1, ensure_ascii=False) + "\n", encoding="utf-8")
        desktop.stop()
    return 0


if __name__ == "__main__":
    sys.exit(main())
