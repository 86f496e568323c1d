# SPDX-FileCopyrightText: 2026 The Lumora authors
# SPDX-License-Identifier: GPL-3.0-or-later
"""What the sound server has played, read from its log."""

import os
import re

NEW_STREAM = re.compile(r"sink-input\.c: Created input \d+ ")
PROPERTY = re.compile(r'sink-input\.c: {2,}(?P<key>\S+) = "(?P<value>.*)"$')


class Sounds:
    """The streams that the sound server got since the start or the last `clear`."""

    def __init__(self, log):
        self._log = log
        self._from = 0

    def clear(self):
        """Forget what was played so far."""
        self._from = os.path.getsize(self._log) if os.path.exists(self._log) else 0

    def played(self):
        """For each stream its event id, or its file, or its name."""
        return [
            stream.get("event.id") or stream.get("media.filename") or stream.get("media.name", "")
            for stream in self._streams()
        ]

    def _streams(self):
        streams, current = [], None
        for line in self._lines():
            found = PROPERTY.search(line)
            if found and current is not None:
                current[found["key"]] = found["value"]
                continue
            if current is not None:
                streams.append(current)
            current = {} if NEW_STREAM.search(line) else None
        return streams

    def _lines(self):
        if not os.path.exists(self._log):
            return []
        with open(self._log, encoding="utf-8", errors="replace") as log:
            log.seek(self._from)
            return log.read().splitlines()
