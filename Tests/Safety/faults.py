# SPDX-FileCopyrightText: 2026 The Lumora authors
# SPDX-License-Identifier: GPL-3.0-or-later
"""Has every open, write, fsync and rename of Lumora's files fail once, each with five errors: it ends well, no
byte that was good is lost, and the next start saves as ever. Run it in the simulated laptop:
faults.py LIBRARY BUNDLE
"""

import errno
import itertools
import json
import pathlib
import sys
import tempfile

from saving import DEFAULTS, HISTORY, Disk, Saver, leftovers, prepare, start_and_end

CALLS = ["open", "write", "fsync", "rename"]
ERRORS = [errno.ENOSPC, errno.EIO, errno.EROFS, errno.EACCES, errno.EMFILE]


def kept():
    """The files that Lumora could not read and put aside, put back."""
    for file in (HISTORY, DEFAULTS):
        beside = file.with_name(file.name + ".unreadable")
        if beside.exists():
            yield file, beside


def run_with(bundle, library, hit, fault):
    """Start, save and end under the fault; whether it happened."""
    hit.unlink(missing_ok=True)
    with Saver(bundle, LD_PRELOAD=library, LUMORA_FAULT=fault, LUMORA_FAULT_HIT=str(hit)) as saver:
        saver.wait_until_running()
        saver.save()
        code = saver.process.wait(10)
    if code != 0:
        raise AssertionError(f"{fault}: exit code {code}")
    return hit.exists()


def check(bundle, fault, before):
    """All that was good is there, in the file or beside it, and the next time it saves."""
    for file, beside in kept():
        if beside.read_bytes() != before[file]:
            raise AssertionError(f"{fault}: {beside.name} is not what {file.name} was")
        # The person puts it back.
        beside.rename(file)
    disk = Disk()
    if start_and_end(bundle) != 0 or not disk.look()[0]:
        raise AssertionError(f"{fault}: no history was saved the next time")
    if leftovers():
        raise AssertionError(f"{fault}: left beside the files: {leftovers()}")


def main():
    """Each call in turn, until there is no such call any more."""
    library, bundle = sys.argv[1:]
    count = 0
    with tempfile.TemporaryDirectory() as folder:
        hit = pathlib.Path(folder) / "hit"
        for call, error in itertools.product(CALLS, ERRORS):
            for number in itertools.count(1):
                prepare()
                disk = Disk()
                before = {file: file.read_bytes() for file in (HISTORY, DEFAULTS)}
                fault = f"{call} {number} {error}"
                happened = run_with(bundle, library, hit, fault)
                if not list(kept()):
                    disk.look()
                check(bundle, fault, before)
                if not happened:
                    break
                count += 1
            print(f"{call:7} {errno.errorcode[error]:7} failed at each of {number - 1} places", flush=True)
    print(f"{count} failures, no byte lost")
    return 0 if count >= len(CALLS) * len(ERRORS) * 2 else 1


if __name__ == "__main__":
    sys.exit(main())
