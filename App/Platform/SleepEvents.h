// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <functional>

namespace lumora {

/// The machine going to sleep and waking up, told on the main thread.
class SleepEvents {
 public:
  virtual ~SleepEvents() = default;

  /// The machine does not sleep before `willSleep` has returned (or the system's patience, some
  /// seconds, is over). `didWake` follows once it is awake again.
  virtual void observe(std::function<void()> willSleep, std::function<void()> didWake) = 0;
};

}  // namespace lumora
