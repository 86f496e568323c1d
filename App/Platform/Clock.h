// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Base/Date.h"

namespace lumora {

/// Tells the time.
class Clock {
 public:
  virtual ~Clock() = default;

  /// By the wall clock, which may be set back or forward while the program runs.
  virtual Date now() const = 0;

  /// Since the machine was started, its sleep included. Nobody sets it: for how long something
  /// lasts.
  virtual Seconds sinceBoot() const = 0;
};

}  // namespace lumora
