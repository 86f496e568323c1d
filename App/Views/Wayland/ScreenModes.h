// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Views/Wayland/Registry.h"

#include <list>
#include <map>
#include <string>

namespace lumora {

/// The monitors' own pixels, of which Qt knows no fractions.
class ScreenModes {
 public:
  explicit ScreenModes(wl_display* display);

  /// How many pixels the longer side of each monitor has now, by the monitor's name, as the
  /// compositor tells (`wl_output` from version 4 on); empty where it does not. Waits for that.
  std::map<std::string, int> longerSides();

 private:
  struct Monitor {
    WaylandObject<wl_output> output;
    std::string name;
    int longerSide = 0;
  };

  static void hear(Monitor& monitor);

  Registry registry_;
  std::list<Monitor> monitors_;  // Also those that have gone.
};

}  // namespace lumora
