# SPDX-FileCopyrightText: 2026 The Lumora authors
# SPDX-License-Identifier: GPL-3.0-or-later
"""Clean roots of Debian's releases, layers on top of them, and commands run in copies that leave nothing behind."""

import contextlib
import dataclasses
import fcntl
import os
import pathlib
import shutil
import signal
import subprocess
import sys

HERE = pathlib.Path(__file__).resolve().parent
PROJECT = HERE.parents[1]
FOLDER = PROJECT / "build" / "releases"
# What container engines leave to root.
CAPABILITIES = [
    "chown",
    "dac_override",
    "fowner",
    "fsetid",
    "kill",
    "setgid",
    "setuid",
    "setpcap",
    "net_bind_service",
    "net_raw",
    "sys_chroot",
    "mknod",
    "audit_write",
    "setfcap",
]
AS_IN_A_CONTAINER = ["setpriv", "--bounding-set=-all," + ",".join(f"+{name}" for name in CAPABILITIES), "--"]
AS_THE_NEWCOMER = ["setpriv", "--reuid=newcomer", "--regid=newcomer", "--init-groups", "--"]
# Where the compiler cache stands in a root, with the libraries that it was linked with.
CACHE = "/srv/ccache"
CACHED = [
    f"CMAKE_C_COMPILER_LAUNCHER={CACHE}/launch",
    f"CMAKE_CXX_COMPILER_LAUNCHER={CACHE}/launch",
    f"CCACHE_DIR={CACHE}/kept",
    "CCACHE_UMASK=000",
    "CCACHE_SLOPPINESS=pch_defines,time_macros,include_file_mtime,include_file_ctime",
]
PATH = "/usr/local/sbin:/usr/local/bin:/usr/sbin:/usr/bin:/sbin:/bin"
NEWCOMER = """
apt-get -qq update
apt-get -qq install --yes --no-install-recommends sudo >/dev/null
useradd --create-home --shell /bin/bash newcomer
echo 'newcomer ALL=(ALL) NOPASSWD: ALL' >/etc/sudoers.d/newcomer
mv /root/lumora /home/newcomer/
chown -R newcomer: /home/newcomer
"""


class NoRoot(Exception):
    """What it takes to make a root is not there, told in one line."""


@dataclasses.dataclass(frozen=True)
class Situation:
    """Where a newcomer stands."""

    told: str
    user: bool = False  # an ordinary one, with sudo
    container: bool = False  # of an engine's usual kind: no right to mount, no new namespaces
    shm: bool = True  # there is /dev/shm
    loops: int = 0  # that keep the machine busy
    session: bool = False  # a display and a session bus are there
    commands: tuple[str, ...] = ("run", "test")


def output(*command):
    """What a command says; it must succeed."""
    return subprocess.run(command, check=True, capture_output=True, text=True).stdout


def mirror():
    """Where this machine itself has Debian from."""
    for update in ("true", "apt-get -qq update"):
        # Apt knows whose a source is once it has been there.
        subprocess.run(update.split(), check=True)
        told = output("apt-get", "indextargets", "--format", "$(ORIGIN)|$(LABEL)|$(REPO_URI)", "Created-By: Packages")
        found = [line.split("|")[2] for line in told.splitlines() if line.startswith("Debian|Debian|")]
        if found:
            return found[0]
    raise NoRoot("apt on this machine has no source of Debian itself; name one with --mirror")


def make(release, mirror_uri, architecture=None):
    """The folder of a clean root with nothing but the essential and apt, made where it is not there yet."""
    name = f"{release}-{architecture}" if architecture else release
    base, archives = FOLDER / name, FOLDER / f"{name}-archives"
    if (base / "done").exists():
        return base
    shutil.rmtree(base, ignore_errors=True)
    base.mkdir(parents=True)
    archives.mkdir(exist_ok=True)
    chosen = [f"--arch={architecture}"] if architecture else []
    with open(FOLDER / f"{name}.log", "w", encoding="utf-8") as log:
        made = subprocess.run(
            [
                "debootstrap",
                "--variant=minbase",
                *chosen,
                f"--cache-dir={archives}",
                release,
                base / "system",
                mirror_uri,
            ],
            stdout=log,
            stderr=subprocess.STDOUT,
            check=False,
        )
    if made.returncode != 0:
        raise NoRoot(f"debootstrap could not make {name}: see {log.name}")
    # As this machine reaches the mirror, whatever stands between; and nobody needs these packages after a power loss.
    apt = output("apt-config", "dump", "Acquire").splitlines()
    kept = [line for line in apt if line.split()[0].rpartition("::")[2] in ("Proxy", "Check-Valid-Until")]
    configuration = base / "system/etc"
    (configuration / "apt/apt.conf.d/99machine").write_text("\n".join(kept) + "\n")
    (configuration / "dpkg/dpkg.cfg.d/99quick").write_text("force-unsafe-io\n")
    (base / "done").touch()
    return base


def cache_for(base):
    """The folder of a compiler cache for the copies of a root: this machine's, which needs nothing of theirs."""
    folder = FOLDER / f"{base.name}-ccache"
    program = shutil.which("ccache")
    (folder / "lib").mkdir(parents=True, exist_ok=True)
    (folder / "kept").mkdir(exist_ok=True)
    (folder / "kept").chmod(0o777)
    shutil.copy(program, folder / "ccache")
    libraries = [word for word in output("ldd", program).split() if word.startswith("/")]
    for library in libraries:
        shutil.copy(library, folder / "lib")
    loader = next(pathlib.Path(library).name for library in libraries if "/ld-" in library)
    launcher = folder / "launch"
    launcher.write_text(f'#!/bin/sh\nexec {CACHE}/lib/{loader} --library-path {CACHE}/lib {CACHE}/ccache "$@"\n')
    launcher.chmod(0o755)
    return folder


def enter(layers, scratch, inside, log=None, situation=None, cache=None):
    """Run a command in a copy of these layers, the lowest last; its exit code. What it writes goes to scratch."""
    situation = situation or Situation("as root")
    base = layers[-1]
    alone = ["setpriv", "--pdeathsig=KILL", "--", "unshare", "--mount", "--pid", "--ipc", "--fork", "--kill-child"]
    into = [
        HERE / "enter_root",
        ":".join(map(str, layers)),
        scratch,
        FOLDER / f"{base.name}-archives",
        "yes" if situation.shm else "no",
        str(situation.loops),
        cache or "",
    ]
    confined = AS_IN_A_CONTAINER if situation.container else []
    with subprocess.Popen(
        [*alone, *into, *confined, "chroot", ".", *inside],
        stdin=subprocess.DEVNULL,
        stdout=log,
        stderr=subprocess.STDOUT if log else None,
    ) as process:
        try:
            return process.wait()
        except BaseException:
            process.kill()
            raise


def shell_in(home, script, variables=()):
    """The command that runs a script in a root, in a folder of it."""
    return [
        "env",
        "-i",
        f"HOME={home}",
        "LANG=C.UTF-8",
        f"PATH={PATH}",
        *variables,
        "bash",
        "-c",
        f"cd {home}\n{script}",
    ]


def reach(scratch):
    """Have a copy of a root find the hosts that this machine finds."""
    folder = scratch / "upper/system/etc"
    folder.mkdir(parents=True, exist_ok=True)
    for name in ("resolv.conf", "hosts"):
        shutil.copy(f"/etc/{name}", folder / name)


def layer(folder, below, script):
    """What a script leaves that root runs on top of other layers, made where it is not there or was another."""
    done = folder / "done"
    if done.exists() and done.read_text(encoding="utf-8") == script:
        return folder / "upper"
    discard(folder)
    reach(folder)
    with open(folder.with_suffix(".log"), "w", encoding="utf-8") as log:
        if enter(below, folder, shell_in("/root", f"set -e\n{script}"), log) != 0:
            raise NoRoot(f"{folder.name} could not be made: see {log.name}")
    done.write_text(script, encoding="utf-8")
    return folder / "upper"


class Root:
    """A copy of a clean root with a clone of the project in it, `with Root(...) as root`; then it is gone.

    With a cache, what was compiled in a copy of it before is not compiled once more. Layers lie on top of the base.
    """

    def __init__(self, base, situation, cache=None, layers=(), scratch=FOLDER / "scratch"):
        self._layers = [*layers, base]
        self._situation = situation
        self._cache = cache
        self._scratch = scratch

    def __enter__(self):
        discard(self._scratch)
        home = self.file("root")
        home.mkdir(parents=True, mode=0o700)
        subprocess.run(["git", "clone", "--quiet", "--no-hardlinks", PROJECT, home / "lumora"], check=True)
        reach(self._scratch)
        return self

    def __exit__(self, *_):
        discard(self._scratch)

    def file(self, path):
        """Where on this machine a file lies that was written in the root."""
        return self._scratch / "upper/system" / path

    def prepare(self, script, log):
        """Make the newcomer, and run a script as the one who owns the machine; its exit code."""
        quiet = dataclasses.replace(self._situation, loops=0)
        return self._enter("/root", f"set -e\n{NEWCOMER if self._situation.user else ''}\n{script}", log, quiet)

    def run(self, command, log):
        """Run a command in the clone, as the newcomer; its exit code."""
        if self._situation.user:
            return self._enter("/home/newcomer", f"cd lumora && {command}", log, self._situation, AS_THE_NEWCOMER)
        return self._enter("/root", f"cd lumora && {command}", log, self._situation)

    def _enter(self, home, script, log, situation, as_somebody=()):
        # A build asks the kernel what it is on, and the kernel is not of that architecture.
        as_its_own = ["setarch", "linux32"] if self._layers[-1].name.endswith("-i386") else []
        inside = [*as_somebody, *as_its_own, *shell_in(home, script, CACHED if self._cache else [])]
        return enter(self._layers, self._scratch, inside, log, situation, self._cache)


def discard(folder):
    """Remove a folder, whoever may have written into it."""
    if folder.exists():
        subprocess.run(["rm", "-rf", "--one-file-system", folder], check=True)


def begin(ccache):
    """Have this process leave its roots in order when it is ended; NoRoot where this machine lacks what it takes."""
    if os.geteuid() != 0:
        raise NoRoot("only root can make roots: run it with sudo")
    programs = ["debootstrap", "git", "unshare", "setpriv", *(["ccache"] if ccache else [])]
    if missing := [name for name in programs if not shutil.which(name)]:
        raise NoRoot(f"missing: {' '.join(missing)}")
    for number in (signal.SIGTERM, signal.SIGHUP):
        signal.signal(number, lambda number, _: sys.exit(128 + number))


@contextlib.contextmanager
def hold(file):
    """As long as the context lasts no other process holds this file, which stands for the folder it is in."""
    file.parent.mkdir(parents=True, exist_ok=True)
    with open(file, "w", encoding="utf-8") as lock:
        fcntl.flock(lock, fcntl.LOCK_EX)
        yield
