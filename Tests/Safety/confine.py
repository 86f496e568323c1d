# SPDX-FileCopyrightText: 2026 The Lumora authors
# SPDX-License-Identifier: GPL-3.0-or-later
"""Runs a command behind closed doors, by what any process may do to itself, so that it takes no namespaces and no
rights: confine.py FOLDER... -- COMMAND...

No capabilities. No sockets but those to this machine (seccomp). Files may be read everywhere but in /dev, where
only the devices that are no hardware are left, and written in the folders alone (Landlock).
"""

import ctypes
import errno
import os
import platform
import struct
import sys

LIBC = ctypes.CDLL(None, use_errno=True)
LIBC.syscall.restype = ctypes.c_long
PR_CAPBSET_DROP, PR_SET_NO_NEW_PRIVS, PR_SET_SECCOMP = 24, 38, 22
CREATE_RULESET, ADD_RULE, RESTRICT_SELF = 444, 445, 446
# linux/landlock.h: execute 1, read a file 4 and a folder 8; all of the first version; truncate, of the third.
READ, ALL, TRUNCATE = 1 | 4 | 8, (1 << 13) - 1, 1 << 14
OF_FILES = 1 | 2 | 4 | TRUNCATE
DEVICES = ["null", "zero", "full", "random", "urandom"]
# linux/audit.h, and the number of socket(2).
MACHINES = {"x86_64": (0xC000003E, 41), "aarch64": (0xC00000B7, 198)}


def checked(result):
    """The result of a call of libc, unless it says that there was an error."""
    if result < 0:
        number = ctypes.get_errno()
        raise OSError(number, os.strerror(number))
    return result


def drop_capabilities():
    """Whoever has any loses them with the next program."""
    for capability in range(64):
        if LIBC.prctl(PR_CAPBSET_DROP, capability, 0, 0, 0) != 0:
            break
    checked(LIBC.prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0))


def close_network():
    """Sockets of another family than AF_UNIX are refused, and so are calls by the numbers of another machine."""
    machine, socket = MACHINES[platform.machine()]
    family_unix, refused = 1, 0x00050000 | errno.EAFNOSUPPORT
    load, equal, answer = 0x20, 0x15, 0x06
    program = b"".join(
        struct.pack("=HBBI", *step)
        for step in (
            (load, 0, 0, 4),
            (equal, 0, 4, machine),
            (load, 0, 0, 0),
            (equal, 0, 3, socket),
            (load, 0, 0, 16),
            (equal, 1, 0, family_unix),
            (answer, 0, 0, refused),
            (answer, 0, 0, 0x7FFF0000),
        )
    )
    steps = ctypes.create_string_buffer(program, len(program))
    filtering = struct.pack("=HxxxxxxQ", len(program) // 8, ctypes.addressof(steps))
    checked(LIBC.prctl(PR_SET_SECCOMP, 2, ctypes.c_char_p(filtering), 0, 0))


def landlock_version():
    """Which one there is; 0 where the kernel has none, or a container engine keeps it from us."""
    version = LIBC.syscall(CREATE_RULESET, None, ctypes.c_size_t(0), 1)
    if version < 0 and ctypes.get_errno() not in (errno.ENOSYS, errno.EOPNOTSUPP, errno.EPERM):
        checked(version)
    return max(0, version)


def close_files(folders):
    """Nothing of /dev, and nothing to write outside the folders."""
    version = landlock_version()
    if version == 0:
        return
    every = ALL | (TRUNCATE if version >= 3 else 0)
    rules = checked(LIBC.syscall(CREATE_RULESET, struct.pack("=Q", every), ctypes.c_size_t(8), 0))
    allowed = {f"/{name}": READ for name in os.listdir("/") if name != "dev"}
    allowed |= {f"/dev/{name}": OF_FILES & every for name in DEVICES} | {folder: every for folder in folders}
    for path, access in allowed.items():
        place = os.open(path, os.O_PATH | os.O_CLOEXEC)
        rule = struct.pack("=Qi", access if os.path.isdir(path) else access & OF_FILES, place)
        checked(LIBC.syscall(ADD_RULE, rules, 1, rule, 0))
        os.close(place)
    checked(LIBC.syscall(RESTRICT_SELF, rules, 0))


if __name__ == "__main__":
    split = sys.argv.index("--")
    drop_capabilities()
    close_network()
    close_files(sys.argv[1:split])
    os.execvp(sys.argv[split + 1], sys.argv[split + 1 :])
