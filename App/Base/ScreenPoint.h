// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace lumora {

/// Where the user clicked, in the screen's pixels.
struct ScreenPoint {
  int x = 0;
  int y = 0;

  bool operator==(const ScreenPoint&) const = default;
};

}  // namespace lumora
