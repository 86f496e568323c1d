// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <functional>

namespace lumora {

/// The system's power-saving mode.
class LowPowerMode {
 public:
  virtual ~LowPowerMode() = default;

  /// Immediate; false also where the system has no such mode.
  virtual bool isEnabled() const = 0;

  /// Calls `changed` on the main thread whenever the mode was switched on or off.
  virtual void observe(std::function<void()> changed) = 0;
};

}  // namespace lumora
