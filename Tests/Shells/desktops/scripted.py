# SPDX-FileCopyrightText: 2026 The Lumora authors
# SPDX-License-Identifier: GPL-3.0-or-later
"""What the shells have in common that run scripts for whoever asks: they tell of every widget on the screen."""

import json

from gi.repository import GLib

HELPERS = """
  const {St} = imports.gi;
  const box = actor => {
    const [x, y] = actor.get_transformed_position(), [width, height] = actor.get_transformed_size();
    // What was not laid out yet has none.
    return width > 0 ? [x, y, width, height] : null;
  };
  const all = actor => actor ? [actor, ...actor.get_children().flatMap(all)] : [];
  const texts = actor => all(actor).filter(a => a instanceof St.Label && a.mapped && a.text).map(a => a.text);
"""


class Scripted:
    """A part of a Desktop whose shell runs scripts."""

    shell = ()  # its name on the bus, object and interface
    helpers = ""  # what its scripts find besides HELPERS

    def _script(self, body, seconds=60):
        """Run a function's body in the shell; what it returns."""
        whole = f"(() => {{\n{HELPERS}{self.helpers}\n{body}\n}})()"
        good, told = self.call(*self.shell, "Eval", "(s)", whole, seconds=seconds)
        if not good:
            raise GLib.Error(told)
        return json.loads(told) if told else None
