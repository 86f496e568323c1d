# SPDX-FileCopyrightText: 2026 The Lumora authors
# SPDX-License-Identifier: GPL-3.0-or-later
"""Clean roots of Debian's releases, and commands run in copies of them that leave nothing behind."""

import dataclasses
import os
import pathlib
import shutil
import subprocess

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


class Root:
    """A copy of a clean root with a clone of the project in it, `with Root(...) as root`; then it is gone.

    With a cache, what was compiled in a copy of it before is not compiled once more.
    """

    def __init__(self, base, situation, cache=None):
        self._base = base
        self._archives = FOLDER / f"{base.name}-archives"
        self._situation = situation
        self._cache = cache
        self._scratch = FOLDER / "scratch"

    def __enter__(self):
        discard(self._scratch)
        home = self._scratch / "upper/system/root"
        home.mkdir(parents=True, mode=0o700)
        subprocess.run(["git", "clone", "--quiet", "--no-hardlinks", PROJECT, home / "lumora"], check=True)
        for name in ("resolv.conf", "hosts"):
            (self._scratch / "upper/system/etc").mkdir(exist_ok=True)
            shutil.copy(f"/etc/{name}", self._scratch / "upper/system/etc" / name)
        return self

    def __exit__(self, *_):
        discard(self._scratch)

    def prepare(self, script, log):
        """Make the newcomer, and run a script as the one who owns the machine; its exit code."""
        return self._enter("/root", f"set -e\n{NEWCOMER if self._situation.user else ''}\n{script}", log)

    def run(self, command, log):
        """Run a command in the clone, as the newcomer; its exit code."""
        situation = self._situation
        if situation.user:
            return self._enter("/home/newcomer", f"cd lumora && {command}", log, situation.loops, AS_THE_NEWCOMER)
        return self._enter("/root", f"cd lumora && {command}", log, situation.loops)

    def _enter(self, home, script, log, loops=0, as_somebody=()):
        situation = self._situation
        alone = ["setpriv", "--pdeathsig=KILL", "--", "unshare", "--mount", "--pid", "--ipc", "--fork", "--kill-child"]
        enter = [
            HERE / "enter",
            self._base,
            self._scratch,
            self._archives,
            "yes" if situation.shm else "no",
            str(loops),
            self._cache or "",
        ]
        confined = AS_IN_A_CONTAINER if situation.container else []
        # A build asks the kernel what it is on, and the kernel is not of that architecture.
        as_its_own = ["setarch", "linux32"] if self._base.name.endswith("-i386") else []
        inside = [
            *as_its_own,
            "env",
            "-i",
            f"HOME={home}",
            "LANG=C.UTF-8",
            f"PATH={PATH}",
            *(CACHED if self._cache else []),
            "bash",
            "-c",
            f"cd {home}\n{script}",
        ]
        with subprocess.Popen(
            [*alone, *enter, *confined, "chroot", ".", *as_somebody, *inside],
            stdin=subprocess.DEVNULL,
            stdout=log,
            stderr=subprocess.STDOUT,
        ) as process:
            try:
                return process.wait()
            except BaseException:
                process.kill()
                raise


def discard(folder):
    """Remove a folder, whoever may have written into it."""
    if folder.exists():
        subprocess.run(["rm", "-rf", "--one-file-system", folder], check=True)


def needs(*programs):
    """What this machine lacks for it and for these programs, as one line, or nothing."""
    if os.geteuid() != 0:
        return "only root can make roots: sudo Tests/Releases/run"
    missing = [name for name in ("debootstrap", "git", "unshare", "setpriv", *programs) if not shutil.which(name)]
    return f"missing: {' '.join(missing)}" if missing else ""
