# SPDX-FileCopyrightText: 2026 The Lumora authors
# SPDX-License-Identifier: GPL-3.0-or-later
"""A disk that does not get done with a flush: menu, popover and refreshes go on meanwhile, the machine falls asleep
only when all is on the disk, and at the end the item is gone at once and the newest on the disk. Run it in the
simulated laptop: slow_disk.py LIBRARY BUNDLE
"""

import pathlib
import sys
import tempfile
import unittest

from lumora_testing.bundle import forget, start_again, windows
from lumora_testing.remote import PATIENCE_SECONDS, RemoteLaptop, wait_for
from lumora_testing.saving import Saver, leftovers  # noqa: I001

BUNDLE, LIBRARY = sys.argv.pop(), sys.argv.pop()


class SlowDisk(unittest.TestCase):
    """A Lumora whose flushes last for as long as the gate is shut."""

    def setUp(self):
        self.laptop = RemoteLaptop()
        self.laptop.reset()
        forget()
        folder = pathlib.Path(self.enterContext(tempfile.TemporaryDirectory()))
        self.gate, self.waiting = folder / "gate", folder / "gate.waiting"
        self.gate.touch()
        # Whatever fails, it is not to be waited for.
        self.addCleanup(self.gate.unlink, missing_ok=True)
        self.lumora = self.enterContext(Saver(BUNDLE, LD_PRELOAD=LIBRARY, LUMORA_FAULT_GATE=str(self.gate)))
        self.lumora.wait_until_running()
        wait_for(self.waiting.exists, "the first save")

    def open_gate(self):
        """Let the disk get done."""
        self.gate.unlink()
        self.waiting.unlink()

    def locks(self):
        """The sleep locks that it holds."""
        return [lock for lock in self.laptop.inhibitors() if lock["open"]]

    def test_menu_popover_and_refreshes_go_on(self):
        self.lumora.refresh(self.laptop, 3)
        self.lumora.snooze()
        self.assertEqual(start_again(BUNDLE), 0)
        wait_for(lambda: windows("Lumora"), "the popover")
        self.assertEqual((self.lumora.history(), self.lumora.settings()), ([], {}))
        self.open_gate()
        wait_for(lambda: "snoozeUntil" in self.lumora.settings(), "the snooze")
        self.assertEqual(self.lumora.end(), 0)
        self.assertEqual(self.lumora.history()[-1]["p"], 41)
        self.assertEqual(leftovers(), [])

    def test_the_machine_falls_asleep_with_the_newest_on_the_disk(self):
        wait_for(self.locks, "the sleep lock")
        self.lumora.refresh(self.laptop, 3)
        self.laptop.prepare_for_sleep(True)
        # Said after it was told of the sleep.
        self.lumora.refresh(self.laptop, 2)
        self.assertEqual(len(self.locks()), 1)
        self.open_gate()
        wait_for(lambda: not self.locks(), "the end of the sleep lock")
        self.assertEqual([sample["p"] for sample in self.lumora.history()], [60, 41, 42, 41])

    def test_the_item_goes_at_once_and_the_process_when_the_newest_is_on_the_disk(self):
        self.lumora.refresh(self.laptop, 2)
        self.lumora.process.terminate()
        wait_for(lambda: not self.lumora.state(self.lumora.session), "the end of the item")
        self.assertIsNone(self.lumora.process.poll())
        self.assertEqual(self.lumora.history(), [])
        self.open_gate()
        self.assertEqual(self.lumora.process.wait(PATIENCE_SECONDS), 0)
        self.assertEqual([sample["p"] for sample in self.lumora.history()], [60, 41, 42])


if __name__ == "__main__":
    unittest.main()
