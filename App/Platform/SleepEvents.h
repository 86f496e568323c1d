// SPDX-FileCopyrightText: 2026 The Lumora authors
// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <functional>
#include <memory>

namespace lumora {

/// The machine going to sleep and waking up, told on the main thread.
class SleepEvents {
 public:
  virtual ~SleepEvents() = default;

  /// The machine does not sleep before `willSleep` has returned and what it took from `hold` is
  /// gone (or the system's patience, some seconds, is over). `didWake` follows each: once it is
  /// awake again, or nobody would tell.
  virtual void observe(std::function<void()> willSleep, std::function<void()> didWake) = 0;

  /// For `willSleep` to take where something is left to do that does not block.
  virtual std::shared_ptr<const void> hold() = 0;
};

}  // namespace lumora
