// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <map>
#include <string>

namespace lumora {

/// How many pixels the longer side of each monitor has now, by the monitor's name, as the
/// compositor tells (`wl_output` from version 4 on); empty on X11, and where it does not.
std::map<std::string, int> longerSides();

}  // namespace lumora
