# SPDX-FileCopyrightText: 2026 The Lumora authors
# SPDX-License-Identifier: GPL-3.0-or-later
"""A full history, put where the program finds it."""

import json
import os
import pathlib
import time

SAMPLES = 43_200


def write_history():
    """Thirty days of minutes."""
    file = pathlib.Path(os.environ["XDG_DATA_HOME"]) / "Lumora" / "history.json"
    file.parent.mkdir(parents=True, exist_ok=True)
    # With all the places that a clock gives a time; fewer would be sooner written.
    now = int(time.time()) + 0.1234567
    samples = [
        {"t": now - 60 * age, "p": 20 + age % 80, "c": age % 2 == 0, "a": age % 2 == 0} for age in range(SAMPLES, 0, -1)
    ]
    file.write_text(json.dumps(samples))
