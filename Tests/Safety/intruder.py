# SPDX-FileCopyrightText: 2026 The Lumora authors
# SPDX-License-Identifier: GPL-3.0-or-later
"""Prints each door that stands open and should not, and fails where one is shut that Lumora goes through:
intruder.py FOLDER "files"|"no files", the latter where nothing can keep a program from files.
"""

import os
import pathlib
import socket
import sys


def attempts(with_files):
    """What nobody behind closed doors can do."""
    for family in (socket.AF_INET, socket.AF_INET6, socket.AF_NETLINK):
        yield f"a socket of family {family}", lambda family=family: socket.socket(family, socket.SOCK_DGRAM)
    if with_files:
        for folder in (os.environ["HOME"], os.environ["XDG_RUNTIME_DIR"], "/tmp", "/dev"):
            yield f"to write in {folder}", lambda folder=folder: open(f"{folder}/intruder", "w", encoding="ascii")
        yield "a terminal", lambda: open("/dev/tty", "rb")
        yield "the devices", lambda: os.listdir("/dev")


def rights():
    """The lines of /proc/self/status that tell of rights, now or to be had."""
    with open("/proc/self/status", encoding="ascii") as status:
        for line in status:
            name, _, value = line.partition(":")
            if (
                name in ("CapInh", "CapPrm", "CapEff", "CapAmb")
                and int(value, 16)
                or name == "NoNewPrivs"
                and value.strip() != "1"
            ):
                yield line.strip()


def use_what_is_allowed(folder):
    """As Lumora does when it saves, and when it speaks to a bus."""
    own = folder / "own"
    own.write_text("written", encoding="ascii")
    own.rename(folder / "renamed").unlink()
    pathlib.Path("/dev/null").write_text("written", encoding="ascii")
    socket.socket(socket.AF_UNIX).close()


if __name__ == "__main__":
    use_what_is_allowed(pathlib.Path(sys.argv[1]))
    for what, attempt in attempts(sys.argv[2] == "files"):
        try:
            attempt()
            print(what)
        except OSError:
            pass
    print(*rights(), sep="\n", end="")
