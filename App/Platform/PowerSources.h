// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "Platform/Value.h"

#include <functional>
#include <optional>
#include <vector>

namespace lumora {

/// The system's account of its power sources. Reading is immediate: no I/O, no waiting.
class PowerSources {
 public:
  virtual ~PowerSources() = default;

  /// One description per power source, in the system's order; absent when the system gives none.
  virtual std::optional<std::vector<Dictionary>> descriptions() = 0;

  /// What the battery itself reports (cycles, capacities, temperature, voltage, current) and the
  /// adapter; absent when there is no such entry.
  virtual std::optional<Dictionary> registryEntry() const = 0;

  /// Calls `changed` on the main thread whenever the power-source situation changes, once for a
  /// burst of changes. False when the system cannot be observed; it may be asked again then.
  virtual bool observe(std::function<void()> changed) = 0;
};

}  // namespace lumora
