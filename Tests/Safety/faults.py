# SPDX-FileCopyrightText: 2026 The Lumora authors
# SPDX-License-Identifier: GPL-3.0-or-later
"""Has every call on Lumora's files fail once, with several errors: it ends well, no byte that was good is lost or
put aside, and the next start saves as ever. Then has each read fail through two starts, which must leave the files
as they are, and has reads and writes take little at a time. Run it in the simulated laptop: faults.py LIBRARY BUNDLE
"""

import errno
import itertools
import pathlib
import sys
import tempfile

from lumora_testing.saving import DEFAULTS, HISTORY, Disk, Saver, leftovers, prepare, start_and_end

ERRORS = [errno.ENOSPC, errno.EIO, errno.EROFS, errno.EACCES, errno.EMFILE]
CALLS = {
    "open": [*ERRORS, errno.ENOMEM],
    "read": [errno.EIO, errno.ENOMEM],
    "fstat": [errno.EIO, errno.ENOMEM],
    "write": ERRORS,
    "fsync": ERRORS,
    "close": [errno.EIO, errno.ENOSPC],
    "rename": ERRORS,
}
# At a start, an end and a change of a setting there are at least so many of each: reading two files, writing two.
LEAST_PLACES = 2


class Faulty:
    """Lumora under faults."""

    def __init__(self, library, bundle, folder):
        self._library, self._bundle = library, bundle
        self._hit = pathlib.Path(folder) / "hit"

    def run(self, fault, refreshes=0):
        """Start, perhaps refresh and leave no file open, save and end under the fault; whether it happened."""
        self._hit.unlink(missing_ok=True)
        with Saver(
            self._bundle, LD_PRELOAD=self._library, LUMORA_FAULT=fault, LUMORA_FAULT_HIT=str(self._hit)
        ) as saver:
            saver.wait_until_running()
            if refreshes:
                saver.expect_to_leave_no_file_open(refreshes)
            code = saver.save_in_turn()
        if code != 0:
            raise AssertionError(f"{fault}: exit code {code}")
        return self._hit.exists()

    def expect_well(self, fault, disk):
        """All that was good is there, nothing lies beside it, and the next time it saves."""
        disk.look()
        if start_and_end(self._bundle) != 0 or not disk.look()[0]:
            raise AssertionError(f"{fault}: no history was saved the next time")
        if leftovers():
            raise AssertionError(f"{fault}: left beside the files: {leftovers()}")

    def fail_each(self, call, error):
        """One after the other, until there is no such call any more; how many there were."""
        for number in itertools.count(1):
            fault = f"{call} {number} {error}"
            prepare()
            disk = Disk()
            happened = self.run(fault)
            self.expect_well(fault, disk)
            if not happened:
                return number - 1

    def fail_through_two_starts(self, call):
        """All of them: the files stay to the byte."""
        prepare()
        disk = Disk()
        before = [file.read_bytes() for file in (HISTORY, DEFAULTS)]
        fault = f"{call} 0 {errno.EIO}"
        for _ in range(2):
            if (
                not self.run(fault, refreshes=20)
                or before != [file.read_bytes() for file in (HISTORY, DEFAULTS)]
                or leftovers()
            ):
                raise AssertionError(f"{fault}: the files changed; beside them: {leftovers()}")
        self.expect_well(fault, disk)

    def take_little(self, call):
        """At each call: all is read and saved."""
        prepare()
        disk = Disk()
        if not self.run(f"{call} 0 0", refreshes=20) or disk.look() != (True, True) or leftovers():
            raise AssertionError(f"{call} in small parts: not saved; beside the files: {leftovers()}")


def main():
    """Each call in turn."""
    library, bundle = sys.argv[1:]
    places = {}
    with tempfile.TemporaryDirectory() as folder:
        faulty = Faulty(library, bundle, folder)
        for call, errors in CALLS.items():
            for error in errors:
                places[call, error] = faulty.fail_each(call, error)
                print(f"{call:7} {errno.errorcode[error]:7} failed at each of {places[call, error]} places", flush=True)
        for call in ("read", "fstat", "open"):
            faulty.fail_through_two_starts(call)
            print(f"{call:7} failed at each place through two starts, and the files stayed", flush=True)
        for call in ("read", "write"):
            faulty.take_little(call)
            print(f"{call:7} took little at a time, and all was saved", flush=True)
    print(f"{sum(places.values())} failures, no byte lost")
    return 0 if min(places.values()) >= LEAST_PLACES else 1


if __name__ == "__main__":
    sys.exit(main())
