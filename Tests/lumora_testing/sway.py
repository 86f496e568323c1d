# SPDX-FileCopyrightText: 2026 The Lumora authors
# SPDX-License-Identifier: GPL-3.0-or-later
"""What sway tells of the windows that it shows."""

import json
import subprocess


def nodes():
    """Each node of its tree, windows and what holds them. None without sway."""

    def below(node):
        yield node
        for child in [*node["nodes"], *node["floating_nodes"]]:
            yield from below(child)

    told = subprocess.run(["swaymsg", "--raw", "-t", "get_tree"], capture_output=True)
    return list(below(json.loads(told.stdout))) if told.returncode == 0 else []


def windows(title):
    """The windows of that title: where they are, and how large without the compositor's frame."""
    return [
        node["rect"] | {"content": node["geometry"]}
        for node in nodes()
        if node.get("name") == title and node.get("pid")
    ]
