// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Platform/Date.h"

namespace lumora {

/// Tells the wall-clock time. It may be set back or forward while the program runs.
class Clock {
 public:
  virtual ~Clock() = default;
  virtual Date now() const = 0;
};

}  // namespace lumora
