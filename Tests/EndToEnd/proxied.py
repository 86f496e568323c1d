# SPDX-FileCopyrightText: 2026 The Lumora authors
# SPDX-License-Identifier: GPL-3.0-or-later
"""The short story, told by a Lumora that may talk on the buses to what a sandbox lets it talk to, and to nobody else.

Which these are stands in the Flatpak manifest. Run it in the simulated laptop: proxied.py BUNDLE MANIFEST
"""

import os
import pathlib
import re
import subprocess
import sys
import tempfile

import story
from lumora_testing.remote import wait_for

BUSES = {"DBUS_SESSION_BUS_ADDRESS": "", "DBUS_SYSTEM_BUS_ADDRESS": "system-"}
NAME = "org.lumora.Lumora"


def permissions(manifest, prefix):
    """What the proxy of a bus is told. A sandbox always lets its program have its own name and see the portals."""
    allowed = re.findall(rf"^  - (--{prefix}talk-name=\S+)$", manifest, re.MULTILINE)
    always = [] if prefix else [f"--own={NAME}", "--talk=org.freedesktop.portal.*"]
    return ["--filter", *always, *(option.replace(f"--{prefix}talk-name", "--talk") for option in allowed)]


def main():
    """Put a proxy before each bus, and tell the story behind them."""
    bundle, manifest = sys.argv[1], pathlib.Path(sys.argv[2]).read_text(encoding="utf-8")
    with tempfile.TemporaryDirectory() as folder:
        command, environment = ["xdg-dbus-proxy"], {}
        for variable, prefix in BUSES.items():
            socket = pathlib.Path(folder) / variable
            command += [os.environ[variable], socket, *permissions(manifest, prefix)]
            environment[variable] = f"unix:path={socket}"
        proxy = subprocess.Popen(command)
        try:
            wait_for(lambda: all((pathlib.Path(folder) / name).exists() for name in BUSES), "the proxies")
            return story.tell(bundle, **environment)
        finally:
            proxy.kill()
            proxy.wait()


if __name__ == "__main__":
    sys.exit(main())
